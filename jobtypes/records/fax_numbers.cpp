#include "jobtypes/records/fax_numbers.h"

#include <algorithm>
#include <string>

const CFCharacterSetRef kFaxDialingCharacterSet =
    CFCharacterSetCreateWithCharactersInString(kCFAllocatorDefault, kFaxDialingCharacters);

CFRef<CFStringRef> CopyDialingStringFromFaxNumber(CFStringRef faxNumber) {
    const CFIndex length = CFStringGetLength(faxNumber);
    std::u16string number(std::size_t(length), u'\0');
    CFStringGetCharacters(faxNumber, CFRangeMake(0, length), number.data());
    std::erase_if(number,
                  [](char16_t unit) { return !CFCharacterSetIsLongCharacterMember(kFaxDialingCharacterSet, unit); });
    return CFRef<CFStringRef>::adopt(
        CFStringCreateWithCharacters(kCFAllocatorDefault, number.data(), CFIndex(number.size())));
}
