#include "model/settings/number_text.h"

#include "platform/foundation/CFNumberFormatter.h"
#include "platform/foundation/CFRef.h"

CFStringRef CreateLocalizedCFStringFromNumberWithDecimals(double value, CFIndex decimals) {
    const auto locale = CFRef<CFLocaleRef>::adopt(CFLocaleCopyCurrent());
    const auto formatter = CFRef<CFNumberFormatterRef>::adopt(
        CFNumberFormatterCreate(kCFAllocatorDefault, locale.get(), kCFNumberFormatterDecimalStyle));
    CFNumberFormatterSetFractionDigits(formatter.get(), decimals);
    return CFNumberFormatterCreateStringWithValue(kCFAllocatorDefault, formatter.get(), kCFNumberDoubleType, &value);
}
