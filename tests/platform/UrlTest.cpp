#include "platform/Url.h"

#include <gtest/gtest.h>

namespace veltramoor {
namespace {

TEST(UrlTest, KeepsTheTextAndKnowsTheOrigin) {
  struct Case {
    const char* text;
    const char* scheme;
    const char* host;
    int port;
    const char* withoutCredentials = nullptr;
  };
  for (const Case& c : {
           Case{"http://index.example", "http", "index.example", 80},
           Case{"HTTP://Index.Example:8080/A%2fb/../c?q=(x)&y='z'#top", "http", "index.example",
                8080},
           Case{"https://index.example:/", "https", "index.example", 443},
           Case{"http://[2001:DB8::1]:9091/", "http", "2001:db8::1", 9091},
           Case{"http://127.1/", "http", "127.0.0.1", 80},
           Case{"http://host?q=a@b", "http", "host", 80},
           Case{"http://u%40:p:w@host:81/a@b", "http", "host", 81, "http://host:81/a@b"},
           Case{"http://@host/", "http", "host", 80, "http://host/"},
           Case{"magnet:?xt=urn:btih:0123&dn=A%20b+c&tr=udp%3A%2F%2Ft", "magnet", "", 0},
           Case{"mailto:a@b", "mailto", "", 0},
       }) {
    SCOPED_TRACE(c.text);
    const auto url = Url::parse(c.text);
    ASSERT_TRUE(url);
    EXPECT_EQ(url->absoluteString(), c.text);
    EXPECT_EQ(url->scheme(), c.scheme);
    EXPECT_EQ(url->host(), c.host);
    EXPECT_EQ(url->port(), c.port);
    EXPECT_EQ(url->withoutCredentials(),
              c.withoutCredentials != nullptr ? c.withoutCredentials : c.text);
  }
  EXPECT_EQ(Url::parse("http://u%40:p:w@host/")->credentials(), "u%40:p:w");
}

TEST(UrlTest, RefusesWhatIsNoUrlAsItStands) {
  for (const std::string_view text : {
           "",
           ":",
           "index.example",
           "//index.example/",
           "1http://h/",
           "ht tp://h/",
           "http:",
           "http:/h",
           "http:h/",
           "http://",
           "http:///path",
           "http://:80/",
           "http://u@/",
           "http://h /",
           "http://h/a b",
           "http://h/\t",
           "http://h/a\r\nX: y",
           "http://h/\xc3\xa9",
           "http://h\xc3\xa9/",
           "http://h/%",
           "http://h/%4",
           "http://h/%zz",
           "http://h/\"",
           "http://h/<",
           "http://h/>",
           "http://h/\\",
           "http://h/^",
           "http://h/`",
           "http://h/{",
           "http://h/|",
           "http://h/}",
           "http://h/[x]",
           "http://h/?a[]=1",
           "http://h/#a#b",
           "http://[::1/",
           "http://::1/",
           "http://[::1]x/",
           "http://h:65536/",
           "http://h:x/",
           "http://h:-1/",
           "http://h:+1/",
           "http://h:99999999999999999999/",
           "http://a@b@h/",
           "http://(null):9091/",
           "magnet:?dn=a b",
           "magnet:?dn=[x]",
       }) {
    EXPECT_FALSE(Url::parse(text)) << text;
  }
  EXPECT_FALSE(Url::parse(std::string_view("http://h/\0x", 11)));
}

}  // namespace
}  // namespace veltramoor
