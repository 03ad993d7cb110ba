// Every key of the preferences store.
#pragma once

#include <string_view>

/// Values are strings unless said otherwise; "" means the same as an absent key. Category codes are
/// the site's category numbers ("0" for all), order codes "99" date, "5" size, "7" seeders and
/// "9" leechers, sort values "desc" and "asc", switches "YES" and "NO".
namespace veltramoor::PreferencesKeys {

/// The bundle version that ran last; written at the first launch and whenever it differs.
inline constexpr std::string_view version = "Veltramoor_version";
/// Number: index of the selected tab; absent: the first.
inline constexpr std::string_view tab = "Veltramoor_tab";

/// Size of the window when it was last closed, in points: "360x720".
inline constexpr std::string_view windowSize = "Veltramoor_windowSize";

/// The site account, in plain text; absent: an empty field.
inline constexpr std::string_view username = "Veltramoor_username";
inline constexpr std::string_view password = "Veltramoor_password";
/// Switch; absent: off.
inline constexpr std::string_view automaticLogin = "Veltramoor_automaticLogin";
/// Switch; absent: on, and "YES" is written when the login screen loads.
inline constexpr std::string_view anonymousLogin = "Veltramoor_anonymousLogin";

/// "Vuze", "Transmission" or "Utorrent"; absent: no remote client is configured.
inline constexpr std::string_view serverClient = "Veltramoor_serverClient";
/// Host or IP address of the person's computer; absent: not configured.
inline constexpr std::string_view serverAddress = "Veltramoor_serverAddress";
/// Port as typed; absent: the client kind's own.
inline constexpr std::string_view serverPort = "Veltramoor_serverPort";
/// Account of the remote interface, in plain text; absent: none.
inline constexpr std::string_view serverUser = "Veltramoor_serverUser";
inline constexpr std::string_view serverPassword = "Veltramoor_serverPassword";

/// Array: names of sent torrents, oldest first, at most 50; absent: none. The one key that is also
/// read off the main thread.
inline constexpr std::string_view torrentHistory = "Veltramoor_torrentHistory";

/// Array: what the terminal program listed last: the listing in words, then name and link of each
/// row in turn; absent: nothing yet. The application itself has no use for it.
inline constexpr std::string_view terminalListing = "Veltramoor_terminalListing";

/// Array: favourite filters in the order added; absent: none, and the favourites stay empty.
inline constexpr std::string_view filters = "Veltramoor_filters";
/// Pages of one favourites batch, "5" to "50"; absent: 5.
inline constexpr std::string_view favoritesCount = "Veltramoor_favoritesCount";
/// Category code; absent: all.
inline constexpr std::string_view favoriteCategory = "Veltramoor_favoriteCategory";

/// Category code (absent: all), order code (absent: "99") and sort value (absent: "desc") of the
/// recent list.
inline constexpr std::string_view recentCategory = "Veltramoor_recentCategory";
inline constexpr std::string_view recentOrderBy = "Veltramoor_recentOrderBy";
inline constexpr std::string_view recentSortBy = "Veltramoor_recentSortBy";

/// The same for searches; category absent: "0".
inline constexpr std::string_view searchCategory = "Veltramoor_searchCategory";
inline constexpr std::string_view searchOrderBy = "Veltramoor_searchOrderBy";
inline constexpr std::string_view searchSortBy = "Veltramoor_searchSortBy";

/// The same for the top 100; category absent, "" or "0": "all". Order and sort are kept, their
/// controls are hidden.
inline constexpr std::string_view top100Category = "Veltramoor_top100Category";
inline constexpr std::string_view top100OrderBy = "Veltramoor_top100OrderBy";
inline constexpr std::string_view top100SortBy = "Veltramoor_top100SortBy";

/// The same for the person's uploads; category absent: "0".
inline constexpr std::string_view uploadCategory = "Veltramoor_uploadCategory";
inline constexpr std::string_view uploadOrderBy = "Veltramoor_uploadOrderBy";
inline constexpr std::string_view uploadSortBy = "Veltramoor_uploadSortBy";

/// The settings screen's own keys, for a list that names none; category absent: "0".
inline constexpr std::string_view category = "Veltramoor_category";
inline constexpr std::string_view orderBy = "Veltramoor_orderBy";
inline constexpr std::string_view sortBy = "Veltramoor_sortBy";

}  // namespace veltramoor::PreferencesKeys
