// Numbers: what fits where, when two are equal, and how they look in the user's notation.

#include "platform/foundation/CFNumberFormatter.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <limits>
#include <optional>

namespace {

template <typename T>
std::optional<T> read(const CFRef<CFNumberRef>& number, CFNumberType type) {
    T value = T{77};
    const bool done = CFNumberGetValue(number.get(), type, &value);
    EXPECT_TRUE(done || value == T{77}) << "written although refused";
    return done ? std::optional(value) : std::nullopt;
}

TEST(Numbers, ReadOnlyWhereTheyFit) {
    constexpr std::int64_t kUnset = std::numeric_limits<SInt32>::min();
    constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
    constexpr double kTwoTo63 = 9223372036854775808.0;
    const struct {
        CFRef<CFNumberRef> number;
        std::optional<SInt16> as16;
        std::optional<SInt32> as32;
        std::optional<std::int64_t> as64;
        double asDouble;
    } rows[] = {
        {makeCFNumber(std::int64_t{-3}), -3, -3, -3, -3},
        {makeCFNumber(std::int64_t{32768}), {}, 32768, 32768, 32768},
        {makeCFNumber(kUnset), {}, SInt32(kUnset), kUnset, double(kUnset)},
        {makeCFNumber(kUnset - 1), {}, {}, kUnset - 1, double(kUnset - 1)},
        {makeCFNumber(kLowest), {}, {}, kLowest, -kTwoTo63},
        {makeCFNumber(12.0), 12, 12, 12, 12},
        {makeCFNumber(0.29 * 100), {}, {}, {}, 0.29 * 100},
        {makeCFNumber(-kTwoTo63), {}, {}, kLowest, -kTwoTo63},
        {makeCFNumber(kTwoTo63), {}, {}, {}, kTwoTo63},
        {makeCFNumber(std::numeric_limits<double>::infinity()), {}, {}, {}, std::numeric_limits<double>::infinity()},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.asDouble);
        EXPECT_EQ(read<SInt16>(row.number, kCFNumberSInt16Type), row.as16);
        EXPECT_EQ(read<SInt32>(row.number, kCFNumberSInt32Type), row.as32);
        EXPECT_EQ(read<std::int64_t>(row.number, kCFNumberSInt64Type), row.as64);
        EXPECT_EQ(read<CFIndex>(row.number, kCFNumberCFIndexType), row.as64);
        EXPECT_EQ(read<double>(row.number, kCFNumberDoubleType), row.asDouble);
        EXPECT_EQ(read<float>(row.number, kCFNumberFloat32Type), float(row.asDouble));
    }
    EXPECT_EQ(read<float>(makeCFNumber(1e39), kCFNumberFloat32Type), std::nullopt);
    EXPECT_EQ(read<SInt32>(makeCFNumber(std::numeric_limits<double>::quiet_NaN()), kCFNumberSInt32Type), std::nullopt);
    EXPECT_EQ(read<SInt32>(makeCFNumber(1.0), CFNumberType(99)), std::nullopt);
    EXPECT_EQ(CFNumberCreate(nullptr, CFNumberType(99), &rows), nullptr);
}

TEST(Numbers, CreateReadsTheTypeThatIsNamed) {
    const SInt16 narrow[] = {-2, 0x7777};
    const auto integer = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberSInt16Type, narrow));
    EXPECT_TRUE(CFEqual(integer.get(), makeCFNumber(std::int64_t{-2}).get()));
    const float quarter = 0.25F;
    const auto real = CFRef<CFNumberRef>::adopt(CFNumberCreate(nullptr, kCFNumberFloat32Type, &quarter));
    EXPECT_EQ(read<double>(real, kCFNumberFloat64Type), 0.25);
}

TEST(Numbers, EqualityIsExact) {
    constexpr std::int64_t kTwoTo53 = std::int64_t{1} << 53;
    const auto one = makeCFNumber(std::int64_t{1});
    const auto real = makeCFNumber(1.0);
    EXPECT_TRUE(CFEqual(one.get(), real.get()));
    EXPECT_TRUE(CFEqual(makeCFNumber(0.0).get(), makeCFNumber(-0.0).get()));
    EXPECT_FALSE(CFEqual(makeCFNumber(1.5).get(), one.get()));
    EXPECT_TRUE(CFEqual(makeCFNumber(kTwoTo53).get(), makeCFNumber(double(kTwoTo53)).get()));
    EXPECT_FALSE(CFEqual(makeCFNumber(kTwoTo53 + 1).get(), makeCFNumber(double(kTwoTo53)).get()));
    EXPECT_FALSE(CFEqual(kCFBooleanTrue, one.get()));

    // What is equal is one key.
    const auto dictionary = makeCFDictionary();
    CFDictionarySetValue(dictionary.get(), one.get(), CFSTR("x"));
    EXPECT_TRUE(CFDictionaryContainsKey(dictionary.get(), real.get()));
}

class Formatter : public testing::TestWithParam<const char*> {
protected:
    ~Formatter() override { QLocale::setDefault(QLocale::c()); }

    static std::string format(CFNumberType type, const void* value, CFIndex digits) {
        const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
        const auto formatter = CFRef<CFNumberFormatterRef>::adopt(
            CFNumberFormatterCreate(nullptr, locale.get(), kCFNumberFormatterDecimalStyle));
        CFNumberFormatterSetFractionDigits(formatter.get(), digits);
        const auto text =
            CFRef<CFStringRef>::adopt(CFNumberFormatterCreateStringWithValue(nullptr, formatter.get(), type, value));
        return textOfCF(text.get());
    }
    static std::string format(double value, CFIndex digits) { return format(kCFNumberDoubleType, &value, digits); }
};

TEST_F(Formatter, WritesTheUsersNotationWithoutGroups) {
    const struct {
        const char* locale;
        const char *real, *integer;
    } rows[] = {
        {"en_US", "12345.68", "9223372036854775807.0"},
        {"de_DE", "12345,68", "9223372036854775807,0"},
        {"fa_IR", "۱۲۳۴۵٫۶۸", "۹۲۲۳۳۷۲۰۳۶۸۵۴۷۷۵۸۰۷٫۰"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.locale);
        QLocale::setDefault(QLocale(QString::fromLatin1(row.locale)));
        EXPECT_EQ(format(12345.678, 2), row.real);
        const std::int64_t largest = std::numeric_limits<std::int64_t>::max();
        EXPECT_EQ(format(kCFNumberSInt64Type, &largest, 1), row.integer);
    }
    QLocale::setDefault(QLocale::c());
    EXPECT_EQ(format(-0.04, 1), "0.0");
    EXPECT_EQ(format(-0.06, 1), "-0.1");
    EXPECT_EQ(format(2.0, 99), "2.000000000000000");
    EXPECT_EQ(format(2.4, -1), "2");
}

TEST_F(Formatter, ReadsWhatUsersOfTheLocaleWrite) {
    const auto parse = [](const std::string& text, CFNumberType type, void* value) {
        const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
        const auto formatter = CFRef<CFNumberFormatterRef>::adopt(
            CFNumberFormatterCreate(nullptr, locale.get(), kCFNumberFormatterDecimalStyle));
        const auto string =
            CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, text.c_str(), kCFStringEncodingUTF8));
        return CFNumberFormatterGetValueFromString(formatter.get(), string.get(), nullptr, type, value);
    };
    const struct {
        const char* locale;
        std::vector<const char*> texts;  // of -8.25
    } rows[] = {
        {"en_US", {"-8.25", "-08.250", "\xE2\x80\x8E-8.25"}},
        {"de_DE", {"-8,25"}},
        {"sv_SE",
         {"-8,25",
          "\xE2\x88\x92"
          "8,25"}},
        {"ar_EG", {"-٨٫٢٥", "-8٫25", "\xD8\x9C-٨٫٢٥"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.locale);
        QLocale::setDefault(QLocale(QString::fromLatin1(row.locale)));
        for (const char* text : row.texts) {
            double value = 0;
            EXPECT_TRUE(parse(text, kCFNumberDoubleType, &value)) << text;
            EXPECT_EQ(value, -8.25) << text;
        }
        double back = 0;
        EXPECT_TRUE(parse(format(-1234567.5, 1), kCFNumberDoubleType, &back));
        EXPECT_EQ(back, -1234567.5);
    }
    QLocale::setDefault(QLocale::c());
    double real = 7;
    for (const char* text :
         {"", "-", ".", "--1", "1-", "+1", "1 000", "1,000", "1e5", "inf", "nan", "0x1", "1.2.3", "½"}) {
        EXPECT_FALSE(parse(text, kCFNumberDoubleType, &real)) << text;
    }
    EXPECT_EQ(real, 7);
    SInt32 integer = 7;
    EXPECT_FALSE(parse("2147483648", kCFNumberSInt32Type, &integer));
    EXPECT_FALSE(parse("99999999999999999999", kCFNumberSInt32Type, &integer));
    EXPECT_FALSE(parse("1.5", kCFNumberSInt32Type, &integer));
    EXPECT_EQ(integer, 7);
    EXPECT_TRUE(parse("-2147483648", kCFNumberSInt32Type, &integer));
    EXPECT_EQ(integer, std::numeric_limits<SInt32>::min());
    const CFRange range{1, 2};
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    const auto formatter = CFRef<CFNumberFormatterRef>::adopt(
        CFNumberFormatterCreate(nullptr, locale.get(), kCFNumberFormatterDecimalStyle));
    EXPECT_TRUE(
        CFNumberFormatterGetValueFromString(formatter.get(), CFSTR("x42y"), &range, kCFNumberSInt32Type, &integer));
    EXPECT_EQ(integer, 42);
    EXPECT_FALSE(CFNumberFormatterGetValueFromString(nullptr, CFSTR("1"), nullptr, kCFNumberSInt32Type, &integer));
    EXPECT_FALSE(CFNumberFormatterGetValueFromString(formatter.get(), nullptr, nullptr, kCFNumberSInt32Type, &integer));
}

std::string plainList(CFStringRef list) {
    return textOfCF(CFRef<CFStringRef>::adopt(CFNumberListCreatePlain(nullptr, list)).get());
}

TEST_F(Formatter, ListsComeBackInPlainDigitsFromEveryLocale) {
    const auto plain = makeCFString("10-23,4567,89");
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory)) {
        QLocale::setDefault(locale);
        const auto written = CFRef<CFStringRef>::adopt(CFNumberListCreateLocalized(nullptr, plain.get()));
        EXPECT_EQ(plainList(written.get()), textOfCF(plain.get())) << qPrintable(locale.name());
        EXPECT_EQ(textOfCF(written.get()).find("10") == std::string::npos, locale.zeroDigit() != QStringLiteral("0"));
    }
}

TEST_F(Formatter, ListsKeepOnlyTheBlanksAndCommasThatPart) {
    const struct {
        const char *list, *plain;
    } rows[] = {
        {" 1 , 3 - 5\t7 ,", "1,3-5,7"},
        {",,1,,2", "1,2"},
        {" , ", ""},
        {"1-\u200F\u0663", "1-3"},
        {"1\u22125\u20146", "1-5-6"},
        {"5 a 6;7,b", "5a6;7,b"},
        {"-, 5", "-,5"},
        {"1--3", "1--3"},
        {"7 -", "7-"},
        {"1\u00A0000", "1,000"},
        {"1\x01 2", "1,2"},
        {"1.5", "1.5"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(plainList(makeCFString(row.list).get()), row.plain) << row.list;
    }
}

}  // namespace
