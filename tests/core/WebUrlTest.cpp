#include "core/WebUrl.h"

#include <gtest/gtest.h>

namespace tirlo {

namespace {

TEST(WebUrlTest, OnlyAddressesOfTheWebPass)
{
    for (const char *good : {"https://example.org", " \n http://localhost:5678/path?q=1#a\t",
                             "HTTPS://EXAMPLE.ORG/", "http://[::1]:80/"})
        EXPECT_TRUE(safeWebURL(QString::fromLatin1(good))) << good;
    for (const char *bad :
         {"", "example.org", "ftp://example.org", "file:///etc/passwd", "javascript:alert(1)",
          "https://", "https:example.org", "https:///path", "http://exa mple.org",
          "data:text/html,https://example.org", "https://example.org:port"})
        EXPECT_FALSE(safeWebURL(QString::fromLatin1(bad))) << bad;
    EXPECT_FALSE(safeWebURL(std::nullopt));
    EXPECT_EQ(safeWebURL(QStringLiteral(" HTTPS://example.org/A ")),
              QUrl(QStringLiteral("https://example.org/A")));
}

} // namespace

} // namespace tirlo
