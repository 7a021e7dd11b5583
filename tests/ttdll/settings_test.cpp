// SPDX-License-Identifier: MIT
#include "ttdll/settings.h"

#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace sixtrace::test {
namespace {

using namespace ttdll;

TEST(TransferSettings, TellEveryValue) {
    const SettingsRead read =
        settingsOf("Link=usb\nSocket=/run/s\nVendor=0x1234\nProduct=43981\nInterface=255\nEndpointOut=0x0F\n"
                   "EndpointIn=0x8F\nWriteTimeout=0\nReadTimeout=60000\n");
    EXPECT_EQ(read.settings.link, LinkKind::Usb);
    EXPECT_EQ(read.settings.socket, "/run/s");
    EXPECT_EQ(read.settings.vendor, 0x1234);
    EXPECT_EQ(read.settings.product, 0xABCD);
    EXPECT_EQ(read.settings.interfaceNumber, 255);
    EXPECT_EQ(read.settings.endpointOut, 0x0F);
    EXPECT_EQ(read.settings.endpointIn, 0x8F);
    EXPECT_EQ(read.settings.writeTimeoutMs, 0);
    EXPECT_EQ(read.settings.readTimeoutMs, 60000);
    EXPECT_EQ(read.complaint, "");
}

TEST(TransferSettings, NumbersOutOfTheirRangeKeepTheDefaultAndAreNamed) {
    const SettingsRead read =
        settingsOf("EndpointOut=0\nEndpointOut=0x10\nEndpointIn=0x80\nEndpointIn=0x01\nEndpointIn=0x90\n"
                   "Vendor=-1\nInterface=256\nReadTimeout=60001\nWriteTimeout=99999999999999999999\n");
    EXPECT_EQ(read.settings.endpointOut, 0x01);
    EXPECT_EQ(read.settings.endpointIn, 0x81);
    EXPECT_EQ(read.settings.vendor, 0x1209);
    EXPECT_EQ(read.settings.interfaceNumber, 0);
    EXPECT_EQ(read.settings.readTimeoutMs, 3000);
    EXPECT_EQ(read.settings.writeTimeoutMs, 2000);
    EXPECT_EQ(std::count(read.complaint.begin(), read.complaint.end(), '\n'), 9);
    EXPECT_TRUE(read.complaint.starts_with("ttdll.ini: \"EndpointOut=0\" is not understood\n")) << read.complaint;
}

TEST(TransferSettings, AByteOrderMarkIsTolerated) {
    const SettingsRead read = settingsOf("\xEF\xBB\xBFLink=socket\r\n");
    EXPECT_EQ(read.settings.link, LinkKind::Socket);
    EXPECT_EQ(read.complaint, "");
}

TEST(TransferSettings, AFileOfNothingButNonsenseIsNamedInTwentyLines) {
    std::string text;
    for (int i = 0; i < 10000; ++i) {
        text += "x\n";
    }
    const SettingsRead read = settingsOf(text);
    EXPECT_EQ(std::count(read.complaint.begin(), read.complaint.end(), '\n'), 20);
    EXPECT_TRUE(read.complaint.ends_with("\"x\" is not understood\nttdll.ini: there is more that is not understood\n"));
}

TEST(TransferSettings, AComplaintHoldsNoControlCharactersAndNoHalfOfACharacter) {
    const SettingsRead control = settingsOf(std::string_view("a\x1B[2J\x7F\0b\n", 9));
    EXPECT_EQ(control.complaint, "ttdll.ini: \"a?[2J??b\" is not understood\n");
    // The 80th byte is the first of three.
    const SettingsRead longer = settingsOf(std::string(79, 'x') + "\xE4\xB8\xAD\n");
    EXPECT_EQ(longer.complaint, "ttdll.ini: \"" + std::string(79, 'x') + "\" is not understood\n");
    const SettingsRead whole = settingsOf(std::string(77, 'x') + "\xE4\xB8\xAD" + "z\n");
    EXPECT_EQ(whole.complaint, "ttdll.ini: \"" + std::string(77, 'x') + "\xE4\xB8\xAD\" is not understood\n");
}

TEST(TransferSettings, ASocketsNameHoldsNoZeroByte) {
    const SettingsRead read = settingsOf(std::string_view("Socket=a\0b\n", 11));
    EXPECT_EQ(read.settings.socket, "instrument.socket");
    EXPECT_EQ(read.complaint, "ttdll.ini: \"Socket=a?b\" is not understood\n");
}

TEST(TransferSettings, AFileThatCannotBeReadIsNamedAndLeavesTheDefaults) {
    const QTemporaryDir folder;
    const SettingsRead missing = readSettings(folder.path().toStdString() + '/');
    EXPECT_EQ(missing.settings.readTimeoutMs, 3000);
    EXPECT_EQ(missing.complaint, "") << "a missing file is no reason to complain";
    // An ordinary file by its kind, whose first byte no process can read.
    ASSERT_TRUE(QFile::link(u"/proc/self/mem"_s, folder.filePath(u"ttdll.ini"_s)));
    const auto [settings, complaint] = readSettings(folder.path().toStdString() + '/');
    EXPECT_EQ(settings.readTimeoutMs, 3000);
    EXPECT_EQ(settings.folder, folder.path().toStdString() + '/');
    EXPECT_EQ(complaint, "ttdll.ini: cannot be read\n");
}

TEST(TransferSettings, TheLineThatTheLimitCutsIsNotRead) {
    const std::string start = "Link=usb\n;";
    // "ReadTimeout=1" would end with the 65536th byte, "23" comes after it.
    const std::string text =
        start + std::string(65536 - start.size() - 1 - 13, 'x') + "\nReadTimeout=123\nWriteTimeout=5\n";
    ASSERT_EQ(text.substr(65536 - 13, 13), "ReadTimeout=1");
    const SettingsRead read = settingsOf(text);
    EXPECT_EQ(read.settings.link, LinkKind::Usb);
    EXPECT_EQ(read.settings.readTimeoutMs, 3000);
    EXPECT_EQ(read.settings.writeTimeoutMs, 2000);
    EXPECT_EQ(read.complaint, "ttdll.ini: is longer than 65536 bytes, the rest is not read\n");
    EXPECT_EQ(settingsOf(text.substr(0, 65536)).settings.readTimeoutMs, 1);
}

} // namespace
} // namespace sixtrace::test
