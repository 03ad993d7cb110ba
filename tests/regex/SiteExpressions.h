// The application's longest expressions, as its pages are matched with them.
#pragma once

namespace veltramoor {

inline constexpr char kRowExpression[] =
    R"re(<tr[\s\S]*?<td[\s\S]*?href=".*?/browse/(\d*?)"[\s\S]*?<td[\s\S]*?)re"
    R"re(href="(.*?/torrent/.*?)".*?>(.*?)</a>[\s\S]*?href="(.*?magnet.*?)")re"
    R"re([\s\S]*?Uploaded (.*?), Size (.*?),[\s\S]*?<td.*?>(.*?)</td>[\s\S]*?<td.*?>(.*?)</td>)re";
inline constexpr char kDetailsExpression[] =
    R"re(([\s\S]*</head>)[\s\S]*?)re"
    R"re((<div id="detailsframe">[\s\S]*<div id="comments">[\s\S]*?</div>))re";
inline constexpr char kAccountExpression[] =
    R"re(([\s\S]*</head>)[\s\S]*?(<h2><span>Preferences[\s\S]*)<div id="foot")re";

}  // namespace veltramoor
