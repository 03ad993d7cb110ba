#include "demo/Gzip.h"

#include <zlib.h>

#include <array>
#include <cstdint>
#include <stdexcept>

namespace veltramoor {
namespace {

constexpr int kGzipWindow = 15 + 16;
constexpr int kZlibWindow = 15;

class Deflater {
 public:
  Deflater(int level, int window) {
    if (deflateInit2(&stream_, level, Z_DEFLATED, window, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
      throw std::runtime_error("zlib could not be set up");
    }
  }
  ~Deflater() { deflateEnd(&stream_); }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  void add(std::string_view text, bool last) {
    // zlib only reads what next_in points to.
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream_.avail_in = static_cast<uInt>(text.size());
    std::array<char, 32768> chunk{};
    do {
      stream_.next_out = reinterpret_cast<Bytef*>(chunk.data());
      stream_.avail_out = static_cast<uInt>(chunk.size());
      deflate(&stream_, last ? Z_FINISH : Z_NO_FLUSH);
      out_.append(chunk.data(), chunk.size() - stream_.avail_out);
    } while (stream_.avail_out == 0);
  }
  [[nodiscard]] std::string take() { return std::move(out_); }

 private:
  z_stream stream_{};
  std::string out_;
};

void appendBigEndian(std::string& out, std::uint32_t value) {
  for (const unsigned shift : {24U, 16U, 8U, 0U}) {
    out += static_cast<char>((value >> shift) & 0xFFU);
  }
}

void appendChunk(std::string& png, std::string_view type, std::string_view data) {
  appendBigEndian(png, static_cast<std::uint32_t>(data.size()));
  const std::string checked = std::string(type) + std::string(data);
  png += checked;
  const auto* bytes = reinterpret_cast<const Bytef*>(checked.data());
  appendBigEndian(png,
                  static_cast<std::uint32_t>(crc32(0, bytes, static_cast<uInt>(checked.size()))));
}

}  // namespace

std::string gzip(std::string_view text) {
  Deflater deflater(1, kGzipWindow);
  deflater.add(text, true);
  return deflater.take();
}

const std::string& gzipBomb() {
  static const std::string bomb = [] {
    Deflater deflater(6, kGzipWindow);
    deflater.add("<html><head></head><body>", false);
    const std::string blanks(1U << 20U, ' ');
    for (int i = 0; i < 64; ++i) {
      deflater.add(blanks, false);
    }
    deflater.add("</body></html>", true);
    return deflater.take();
  }();
  return bomb;
}

std::string categoryPng(int category) {
  constexpr int kEdge = 32;
  constexpr std::array<std::array<int, 3>, 7> kColours{{{90, 90, 90},
                                                        {46, 125, 110},
                                                        {60, 100, 170},
                                                        {130, 90, 160},
                                                        {170, 80, 70},
                                                        {160, 120, 40},
                                                        {100, 120, 60}}};
  const auto& colour = kColours[static_cast<std::size_t>(category / 100) % kColours.size()];
  std::string pixels;
  for (int y = 0; y < kEdge; ++y) {
    pixels += '\0';  // no filter on this line
    for (int x = 0; x < kEdge; ++x) {
      const bool border = x < 2 || y < 2 || x >= kEdge - 2 || y >= kEdge - 2;
      // The member's number as a bar at the foot tells the icons of one group apart.
      const bool bar = y > 24 && y < 28 && x > 3 && x < 4 + 2 * (category % 100 % 14);
      for (const int part : colour) {
        pixels += static_cast<char>(border ? part / 2 : bar ? 240 : part);
      }
    }
  }
  std::string header;
  appendBigEndian(header, kEdge);
  appendBigEndian(header, kEdge);
  header += std::string_view("\x08\x02\0\0\0", 5);  // 8 bits a channel, RGB
  Deflater deflater(9, kZlibWindow);
  deflater.add(pixels, true);

  std::string png = "\x89PNG\r\n\x1A\n";
  appendChunk(png, "IHDR", header);
  appendChunk(png, "IDAT", deflater.take());
  appendChunk(png, "IEND", "");
  return png;
}

std::string magnetGif() {
  constexpr std::string_view kPicture =
      "............"
      "..########.."
      ".##########."
      ".####..####."
      ".###....###."
      ".###....###."
      ".###....###."
      ".###....###."
      ".oo......oo."
      ".oo......oo."
      ".oo......oo."
      "............";
  // 128 colours of which three are used: then each code is one byte as long as the code table is
  // cleared in time, and a pixel can be written as it is.
  std::string gif("GIF89a\x0C\0\x0C\0\xF6\0\0", 13);
  gif += std::string_view("\xFF\xFF\xFF\xB0\x30\x30\x50\x50\x50", 9);
  gif.append(std::size_t{125} * 3, '\0');
  gif += std::string_view("!\xF9\x04\x01\0\0\0\0", 8);         // colour 0 is transparent
  gif += std::string_view(",\0\0\0\0\x0C\0\x0C\0\0\x07", 11);  // one image, 7 bits a pixel
  std::string codes;
  for (std::size_t i = 0; i < kPicture.size(); ++i) {
    if (i % 100 == 0) {
      codes += '\x80';
    }
    codes += kPicture[i] == '#' ? '\x01' : kPicture[i] == 'o' ? '\x02' : '\0';
  }
  codes += '\x81';
  gif += static_cast<char>(codes.size());
  gif += codes;
  gif += std::string_view("\0;", 2);
  return gif;
}

}  // namespace veltramoor
