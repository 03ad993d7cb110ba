#include "lists/listings/SiteCodes.h"

#include "Util/Ascii.h"

namespace veltramoor {

const std::vector<CategoryGroup>& categoryTable() {
  // "Highres" and "HighRes": the site's own spellings.
  static const std::vector<CategoryGroup> table = {
      {"All", {{"All", "0"}}},
      {"Audio",
       {{"All", "100"},
        {"Music", "101"},
        {"Audio books", "102"},
        {"Sound clips", "103"},
        {"FLAC", "104"},
        {"Other", "199"}}},
      {"Video",
       {{"All", "200"},
        {"Movies", "201"},
        {"Movies DVDR", "202"},
        {"Music videos", "203"},
        {"Movie clips", "204"},
        {"TV shows", "205"},
        {"Handheld", "206"},
        {"Highres - Movies", "207"},
        {"Highres - TV shows", "208"},
        {"Other", "299"}}},
      {"Applications",
       {{"All", "300"},
        {"Windows", "301"},
        {"Mac", "302"},
        {"UNIX", "303"},
        {"Handheld", "304"},
        {"Other OS", "399"}}},
      {"Games",
       {{"All", "400"},
        {"PC", "401"},
        {"Mac", "402"},
        {"PS2", "403"},
        {"XBOX360", "404"},
        {"Wii", "405"},
        {"Handheld", "406"},
        {"Other", "499"}}},
      {"Porn",
       {{"All", "500"},
        {"Movies", "501"},
        {"Movies DVDR", "502"},
        {"Pictures", "503"},
        {"Games", "504"},
        {"HighRes - Movies", "505"},
        {"Movie clips", "506"},
        {"Other", "599"}}},
      {"Other",
       {{"All", "600"},
        {"E-books", "601"},
        {"Comics", "602"},
        {"Pictures", "603"},
        {"Covers", "604"},
        {"Other", "699"}}},
  };
  return table;
}

const std::vector<SettingChoice>& orderTable() {
  static const std::vector<SettingChoice> table = {
      {"Date", "99"}, {"Size", "5"}, {"Seeders", "7"}, {"Leechers", "9"}};
  return table;
}

const std::vector<SettingChoice>& sortTable() {
  static const std::vector<SettingChoice> table = {{"Desc", "desc"}, {"Asc", "asc"}};
  return table;
}

std::string categoryInWords(std::string_view code) {
  for (const CategoryGroup& group : categoryTable()) {
    for (const SettingChoice& member : group.members) {
      if (member.code == code) {
        const std::string name(group.name);
        return &member == &group.members.front() ? name : name + ", " + std::string(member.name);
      }
    }
  }
  return std::string(code);
}

std::string orderInWords(std::string_view order, std::string_view sort) {
  const std::string_view ascending = sortTable().back().code;
  const SettingChoice& usual = orderTable().front();
  if ((order.empty() || order == usual.code) && sort != ascending) {
    return "";
  }
  std::string name(order.empty() ? usual.name : order);
  for (const SettingChoice& choice : orderTable()) {
    if (choice.code == order) {
      name = choice.name;
    }
  }
  return "by " + lowerCase(name) + (sort == ascending ? ", ascending" : "");
}

}  // namespace veltramoor
