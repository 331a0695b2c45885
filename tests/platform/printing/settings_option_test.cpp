// Settings as the value of an option, which anybody may have written.
#include "platform/printing/settings_option.h"
#include "tests/platform/printing/printing_fixture.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <random>

#include <zlib.h>

namespace {

CFRef<CFMutableDictionaryRef> settingsWith(const std::string& text) {
    auto settings = CFRef<CFMutableDictionaryRef>::adopt(
        CFDictionaryCreateMutable(nullptr, 0, &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
    CFDictionarySetValue(settings.get(), CFSTR("Notes"), CFStringMakeConstant(text.c_str()));
    return settings;
}

/// What somebody may send who does not use our function.
std::string packedByHand(const std::string& text) {
    uLongf size = compressBound(text.size());
    QByteArray packed(static_cast<qsizetype>(size), '\0');
    compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(text.data()), text.size(),
              9);
    packed.truncate(static_cast<qsizetype>(size));
    return "1." + packed.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals).toStdString();
}

}  // namespace

TEST(SettingsOption, HoldsWhatFits) {
    std::string reason;
    const auto settings = settingsWith("Grüße, \"quoted\" {and} 'so' \\ on");
    const auto text = packSettings(settings.get(), &reason);
    ASSERT_TRUE(text) << reason;
    EXPECT_EQ(text->find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-_."),
              std::string::npos);
    EXPECT_TRUE(CFEqual(unpackSettings(*text, &reason).get(), settings.get())) << reason;

    std::mt19937 random;
    std::string noise;
    for (int i = 0; i < 40000; ++i) {
        noise += static_cast<char>('!' + random() % 5 * 7);
        noise += static_cast<char>('A' + random() % 26);
    }
    EXPECT_FALSE(packSettings(settingsWith(noise).get(), &reason));
    EXPECT_NE(reason.find("32700"), std::string::npos) << reason;
}

TEST(SettingsOption, IsNeverUnpackedBeyondItsLimit) {
    const std::string head = "<plist version=\"1.0\"><dict><key>a</key><string>";
    const std::string tail = "</string></dict></plist>";
    std::string reason;
    const std::string most(kMostSettingsBytes - head.size() - tail.size(), 'a');
    EXPECT_TRUE(unpackSettings(packedByHand(head + most + tail), &reason)) << reason;
    EXPECT_FALSE(unpackSettings(packedByHand(head + most + "a" + tail), &reason));
    const std::string bomb = packedByHand(std::string(20 << 20, 'a'));
    ASSERT_LT(bomb.size(), kMostSettingsText);
    EXPECT_FALSE(unpackSettings(bomb, &reason));
}
