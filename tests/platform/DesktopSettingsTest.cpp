#include "platform/X11DesktopSettings.h"

#include <gtest/gtest.h>

namespace {

using gui::X11DesktopSettings;

TEST(DesktopSettings, ReadsAManagersNumbersInEitherOrder)
{
    const std::string little("\0\0\0\0"
                             "\1\0\0\0"
                             "\3\0\0\0"  // order, serial, count
                             "\1\0\3\0"
                             "Net\0"
                             "\0\0\0\0"
                             "\2\0\0\0"
                             "ab\0\0"  // a text
                             "\2\0\1\0"
                             "C\0\0\0"
                             "\0\0\0\0"
                             "\1\2\3\4\5\6\7\1"  // a colour
                             "\0\0\7\0"
                             "Xft/DPI\0"
                             "\0\0\0\0"
                             "\0\x40\2\0",
                             72);
    EXPECT_EQ(X11DesktopSettings::ParseManager(little), (std::map<std::string, int>{{"Xft/DPI", 147456}}));
    const std::string big("\1\0\0\0"
                          "\0\0\0\1"
                          "\0\0\0\1"
                          "\0\0\0\2"
                          "ab\0\0"
                          "\0\0\0\0"
                          "\0\0\1\x90",
                          28);
    EXPECT_EQ(X11DesktopSettings::ParseManager(big), (std::map<std::string, int>{{"ab", 400}}));
    for (std::size_t length = 0; length < little.size(); ++length)
        EXPECT_TRUE(X11DesktopSettings::ParseManager(little.substr(0, length)).empty()) << length;
}

TEST(DesktopSettings, FindsAResource)
{
    const char* text = "Xft.dpiScale:\t7\nXft.antialias:\t1\nXft.dpi:\t144.5\n";
    EXPECT_FLOAT_EQ(X11DesktopSettings::FindResource(text, "Xft.dpi").value(), 144.5f);
    EXPECT_FALSE(X11DesktopSettings::FindResource(text, "Xft.hinting"));
    EXPECT_FALSE(X11DesktopSettings::FindResource("Xft.dpi: large", "Xft.dpi"));
}

}  // namespace
