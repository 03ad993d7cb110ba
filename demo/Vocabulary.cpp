#include "demo/Vocabulary.h"

#include <algorithm>
#include <array>

namespace veltramoor {
namespace {

using Words = std::string_view;

constexpr std::array<Words, 4> kAlbums{"%A - %T (%Y) [MP3 V0]", "%A - %T (%Y)",
                                       "%A & the %P Ensemble - %T [320 kbps]",
                                       "%A - Live in %P (%Y)"};
constexpr std::array<Words, 3> kAudioBooks{"%A - %T (unabridged audio book)",
                                           "%T by %A, read by volunteers",
                                           "%A - %T, chapters 1-%N [64 kbps]"};
constexpr std::array<Words, 3> kSounds{"Field recordings - %P (%Y)",
                                       "%T - sound effects, volume %N",
                                       "%P harbour at dawn, take %N [48 kHz]"};
constexpr std::array<Words, 3> kLossless{"%A - %T (%Y) [FLAC]",
                                         "%A - Suites from %P (%Y) [FLAC 24-96]",
                                         "%A - %T (%Y) [FLAC] {public domain}"};
constexpr std::array<Words, 4> kFilms{"%T (%Y) open film 720p", "%T (%Y) [restored] x264",
                                      "%T - a film from %P (%Y)",
                                      "%T (%Y) public domain DVDRip x264"};
constexpr std::array<Words, 2> kFilmDiscs{"%T (%Y) [DVD-R, full disc]", "%T (%Y) PAL DVD + extras"};
constexpr std::array<Words, 3> kClips{"%T - making of, part %N", "%P from the air (%Y) clip %N",
                                      "%A - %T (official open clip)"};
constexpr std::array<Words, 3> kShows{"%T S%NE%N 720p", "%T S%NE%N x264 [%P TV]",
                                      "%T - season %N complete (%Y)"};
constexpr std::array<Words, 2> kSharp{"%T (%Y) 1080p open film x264",
                                      "%T (%Y) 2160p [restored] HDR"};
constexpr std::array<Words, 4> kSystems{"%PLinux %V amd64 DVD-1.iso", "%PBSD %V install.iso",
                                        "%PLinux %V arm64 netinst.iso", "%P OS %V live desktop"};
constexpr std::array<Words, 3> kPrograms{"%P Office %V (free software)", "%P Draw %V portable",
                                         "%PPlayer %V + source"};
constexpr std::array<Words, 3> kGames{"%T %V (free game)", "%T: %P edition %V",
                                      "%T - level pack %N"};
constexpr std::array<Words, 3> kCourses{"Life drawing course, lesson %N - %P studio",
                                        "%A - %T: drawing from plaster casts (%Y)",
                                        "Anatomy for artists, sheet %N [%P academy]"};
constexpr std::array<Words, 3> kBooks{"%A - %T (%Y) [epub]", "%T by %A (public domain, pdf)",
                                      "%A - Collected works, volume %N"};
constexpr std::array<Words, 2> kComics{"%T #%N (%Y)", "%T - the complete strips, book %N"};
constexpr std::array<Words, 2> kPictures{"%P in %N photographs (CC0)",
                                         "%T - maps and engravings (%Y)"};

constexpr std::array<DemoGroup, 6> kGroups{{{100, "Audio"},
                                            {200, "Video"},
                                            {300, "Applications"},
                                            {400, "Games"},
                                            {500, "Courses"},
                                            {600, "Other"}}};

constexpr std::uint64_t kMiB = 1024;

constexpr std::array<DemoCategory, 38> kCategories{{
    {101, "Music", false, kAlbums, 40 * kMiB, 3},
    {102, "Audio books", false, kAudioBooks, 60 * kMiB, 4},
    {103, "Sound clips", false, kSounds, 200, 9},
    {104, "FLAC", false, kLossless, 180 * kMiB, 3},
    {199, "Other", false, kSounds, 500, 8},
    {201, "Movies", true, kFilms, 500 * kMiB, 2},
    {202, "Movies DVDR", true, kFilmDiscs, 3500 * kMiB, 1},
    {203, "Music videos", false, kClips, 30 * kMiB, 4},
    {204, "Movie clips", true, kClips, 10 * kMiB, 4},
    {205, "TV shows", true, kShows, 170 * kMiB, 3},
    {206, "Handheld", false, kFilms, 90 * kMiB, 2},
    {207, "Highres - Movies", true, kSharp, 4300 * kMiB, 2},
    {208, "Highres - TV shows", true, kShows, 1100 * kMiB, 2},
    {299, "Other", false, kClips, 60 * kMiB, 5},
    {301, "Windows", false, kPrograms, 4 * kMiB, 6},
    {302, "Mac", false, kPrograms, 9 * kMiB, 6},
    {303, "UNIX", false, kSystems, 300 * kMiB, 3},
    {304, "Handheld", false, kPrograms, 900, 5},
    {399, "Other OS", false, kSystems, 40 * kMiB, 5},
    {401, "PC", false, kGames, 50 * kMiB, 6},
    {402, "Mac", false, kGames, 50 * kMiB, 5},
    {403, "PS2", false, kGames, 600 * kMiB, 2},
    {404, "XBOX360", false, kGames, 3000 * kMiB, 1},
    {405, "Wii", false, kGames, 400 * kMiB, 3},
    {406, "Handheld", false, kGames, 2 * kMiB, 5},
    {499, "Other", false, kGames, 700, 8},
    {501, "Course films", true, kCourses, 500 * kMiB, 2},
    {502, "Course DVDs", true, kCourses, 3500 * kMiB, 1},
    {503, "Life drawing course", false, kCourses, 5 * kMiB, 5},
    {504, "Teaching games", false, kGames, 20 * kMiB, 5},
    {505, "Course films, sharp", true, kCourses, 2500 * kMiB, 2},
    {506, "Course clips", true, kCourses, 20 * kMiB, 4},
    {599, "Other courses", false, kCourses, 3 * kMiB, 6},
    {601, "E-books", false, kBooks, 300, 7},
    {602, "Comics", false, kComics, 12 * kMiB, 4},
    {603, "Pictures", false, kPictures, 8 * kMiB, 6},
    {604, "Covers", false, kPictures, 700, 5},
    {699, "Other", false, kBooks, 90, 9},
}};

constexpr std::array<Words, 28> kAdjectives{
    "Quiet",    "Amber",  "Distant", "Hollow",   "Northern", "Silver", "Lantern",
    "Paper",    "Winter", "Copper",  "Restless", "Salt",     "Second", "Wandering",
    "Patient",  "Blue",   "Crooked", "Evening",  "Glass",    "Early",  "Unfinished",
    "Borrowed", "Slow",   "Hidden",  "Tall",     "Märzen",   "Över",   "Brazen"};

constexpr std::array<Words, 36> kNouns{
    "Harbour",  "Orchard",       "Clockmaker",   "Meadow",      "Railway",  "Observatory",
    "Ferry",    "Garden",        "Cartographer", "Bridge",      "Weather",  "Lighthouse",
    "Almanac",  "Kestrel",       "Mill",         "Archive",     "Sparrow",  "Tide",
    "Workshop", "Atlas",         "Stairwell",    "Post Office", "Fjord",    "Bakery",
    "Signal",   "Notebook",      "Café",         "Señal",       "Forêt",    "Brücke",
    "Ångström", "Звёзды и хлеб", "Żuraw",        "Compass",     "Windmill", "Theatre"};

constexpr std::array<Words, 18> kPlaces{"Veldmark", "Ostra",   "Calder",  "Minoa",   "Halvard",
                                        "Tessen",   "Brío",    "Lumen",   "Korsvik", "Arden",
                                        "Sólheim",  "Pelican", "Marrow",  "Juniper", "Quill",
                                        "Tamarind", "Zürnau",  "Evenlode"};

constexpr std::array<Words, 20> kPeople{
    "Ada Marsh",       "Tomás Velde",  "The Tin Weavers", "Ingrid Solberg", "Jonas Quay",
    "Mina Okoro",      "Low Meridian", "Élise Carrow",    "Pavel Dvořan",   "Hatter's Field",
    "Samir Lindqvist", "Oda Fenn",     "R. B. Holloway",  "Yuki Tanabe",    "Brass & Willow",
    "Noor Hadley",     "Clement Ashe", "Søren Bakke",     "Lia Montrose",   "Otto Kranich"};

constexpr std::array<Words, 11> kOddEndings{
    " (director's cut)",
    " \"remastered\"",
    " [subs: en, de, fr, pt-BR]",
    " {repack}",
    " <3",
    " & more <b>extras</b>",
    " 100% free",
    " #1 + #2 / part A?",
    " 星の図鑑",
    " - Хроника",
    " - with booklet, liner notes, scanned covers, an interview of forty minutes, the original "
    "score and a guide for translators"};

constexpr std::array<Words, 42> kUploaders{
    "demo",     "anna",         "mods",     "papermill", "kestrel9", "oldtapes", "northpier",
    "quill",    "ferryman",     "bookworm", "lumen",     "hedgerow", "tinker",   "archivist",
    "saltwind", "juno",         "marlow",   "nightbus",  "clover",   "osprey",   "gramophone",
    "vellum",   "harbor_light", "isobar",   "pixelmoss", "redwood",  "sundial",  "thistle",
    "umber",    "violet.k",     "wander",   "xylo",      "yarrow",   "zephyr",   "basalt",
    "cobalt",   "driftwood",    "ember",    "foxglove",  "granite",  "heron",    "inkwell"};

}  // namespace

std::span<const DemoGroup> demoGroups() { return kGroups; }
std::span<const DemoCategory> demoCategories() { return kCategories; }

const DemoCategory* demoCategory(int code) {
  const auto* found = std::ranges::find(kCategories, code, &DemoCategory::code);
  return found == kCategories.end() ? nullptr : found;
}

std::string_view demoCategoryLabel(int code) {
  if (code == 0) {
    return "All";
  }
  if (const DemoCategory* category = demoCategory(code)) {
    return category->label;
  }
  const auto* group = std::ranges::find(kGroups, code, &DemoGroup::code);
  return group == kGroups.end() ? std::string_view{} : group->label;
}

std::span<const std::string_view> demoAdjectives() { return kAdjectives; }
std::span<const std::string_view> demoNouns() { return kNouns; }
std::span<const std::string_view> demoPlaces() { return kPlaces; }
std::span<const std::string_view> demoPeople() { return kPeople; }
std::span<const std::string_view> demoOddEndings() { return kOddEndings; }
std::span<const std::string_view> demoUploaders() { return kUploaders; }

}  // namespace veltramoor
