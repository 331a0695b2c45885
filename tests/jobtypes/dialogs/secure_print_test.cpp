// What the dialog of a passcode says while it is typed.
#include "jobtypes/dialogs/secure_print.h"
#include "tests/support/cf_values.h"

#include <gtest/gtest.h>

TEST(SecurePrint, SaysWhatIsWrongWithThePasscodeSoFar) {
    const auto fault = [](CFStringRef passcode, CFStringRef confirmation) {
        const CFStringRef key = PasscodeFault(passcode, confirmation);
        return key == nullptr ? std::string() : textOfCF(key);
    };
    EXPECT_EQ(fault(CFSTR(""), CFSTR("")), "");
    EXPECT_EQ(fault(CFSTR("123"), CFSTR("123")), "Passcode Too Short");
    EXPECT_EQ(fault(CFSTR("1234"), CFSTR("")), "") << "not yet";
    EXPECT_EQ(fault(CFSTR("1234"), CFSTR("12")), "");
    EXPECT_EQ(fault(CFSTR("1234"), CFSTR("13")), "Passcodes Differ");
    EXPECT_EQ(fault(CFSTR("1234"), CFSTR("12345")), "Passcodes Differ");
    EXPECT_EQ(fault(CFSTR("1234"), CFSTR("1234")), "");
}
