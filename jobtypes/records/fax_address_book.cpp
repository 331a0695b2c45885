#include "jobtypes/records/fax_address_book.h"

#include "jobtypes/records/fax_numbers.h"
#include "platform/foundation/CFNumber.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

namespace {

CFRef<CFStringRef> CopyText(ABRecordRef record, CFStringRef property) {
    return CFRef<CFStringRef>::adopt(static_cast<CFStringRef>(ABRecordCopyValue(record, property)));
}

CFRef<ABMultiValueRef> CopyMultiValue(ABPersonRef person, CFStringRef property) {
    return CFRef<ABMultiValueRef>::adopt(static_cast<ABMultiValueRef>(ABRecordCopyValue(person, property)));
}

struct LabeledText {
    CFRef<CFStringRef> label;
    CFRef<CFStringRef> text;
};

std::vector<LabeledText> ReadMultiValue(ABPersonRef person, CFStringRef property) {
    const CFRef<ABMultiValueRef> values = CopyMultiValue(person, property);
    std::vector<LabeledText> texts;
    for (CFIndex i = 0; i < ABMultiValueCount(values.get()); ++i) {
        texts.push_back(
            {CFRef<CFStringRef>::adopt(ABMultiValueCopyLabelAtIndex(values.get(), i)),
             CFRef<CFStringRef>::adopt(static_cast<CFStringRef>(ABMultiValueCopyValueAtIndex(values.get(), i)))});
    }
    return texts;
}

std::u16string UnitsOf(CFStringRef string) {
    std::u16string units(static_cast<std::size_t>(CFStringGetLength(string)), u'\0');
    if (!units.empty()) {
        CFStringGetCharacters(string, CFRangeMake(0, CFStringGetLength(string)), units.data());
    }
    return units;
}

/// Without the differences that searching and sorting overlook.
std::u16string Folded(CFStringRef string) {
    const auto folded = CFRef<CFMutableStringRef>::adopt(CFStringCreateMutableCopy(kCFAllocatorDefault, 0, string));
    CFStringFold(folded.get(), kCFCompareCaseInsensitive | kCFCompareDiacriticInsensitive, nullptr);
    return UnitsOf(folded.get());
}

/// Labels that other programs' users made up are theirs: "Lab fax".
bool IsFaxLabel(CFStringRef label) {
    return Folded(label).find(u"fax") != std::u16string::npos;
}

bool IsVoiceLabel(CFStringRef label) {
    return !IsFaxLabel(label) &&
           CFStringCompare(label, kABPhonePagerLabel, kCFCompareCaseInsensitive) != kCFCompareEqualTo;
}

/// A contact for each fax number of the person.
void AppendContacts(ABPersonRef person, std::vector<FaxContact>& contacts) {
    const std::vector<LabeledText> phones = ReadMultiValue(person, kABPhoneProperty);
    const auto isFax = [](const LabeledText& phone) {
        return IsFaxLabel(phone.label.get()) && CFStringGetLength(phone.text.get()) > 0;
    };
    if (std::ranges::none_of(phones, isFax)) {
        return;
    }
    FaxRecipient common;
    RecipientNamesFromPerson(person, common);
    common.setOrganization(CopyText(person, kABOrganizationProperty).get());
    common.setMailbox(CopyText(person, kXMailboxABProperty).get());
    common.setUID(CFRef<CFStringRef>::adopt(ABRecordCopyUniqueId(person)).get());
    const auto voice =
        std::ranges::find_if(phones, [](const LabeledText& phone) { return IsVoiceLabel(phone.label.get()); });
    if (voice != phones.end()) {
        common.setPhoneNumber(voice->text.get());
    }
    if (const auto addresses = ReadMultiValue(person, kABEmailProperty); !addresses.empty()) {
        common.setEmailAddress(addresses.front().text.get());
    }
    const std::u16string name = Folded(DisplayNameFromRecipient(&common).get());
    const std::u16string organization = Folded(common.organization());
    for (const LabeledText& phone : phones) {
        if (isFax(phone)) {
            FaxRecipientOwner recipient(new FaxRecipient(common));
            recipient->setFaxNumber(phone.text.get());
            recipient->setFaxNumberLabel(phone.label.get());
            std::u16string searched = name;
            for (const std::u16string& text : {organization, Folded(phone.text.get()),
                                               UnitsOf(CopyDialingStringFromFaxNumber(phone.text.get()).get())}) {
                searched.append(1, u'\n').append(text);
            }
            contacts.push_back({std::move(recipient), name, std::move(searched)});
        }
    }
}

template <typename Use>
void ForEachRecord(CFArrayRef records, Use use) {
    for (CFIndex i = 0; i < CFArrayGetCount(records); ++i) {
        use(static_cast<ABRecordRef>(const_cast<void*>(CFArrayGetValueAtIndex(records, i))));
    }
}

using ContactsByPerson = std::unordered_multimap<std::u16string, std::size_t>;

FaxContactGroup ReadGroup(ABGroupRef group, const ContactsByPerson& contactsByPerson) {
    FaxContactGroup read{CopyText(group, kABGroupNameProperty), {}};
    const auto members = CFRef<CFArrayRef>::adopt(ABGroupCopyArrayOfAllMembers(group));
    ForEachRecord(members.get(), [&](ABPersonRef person) {
        const auto uid = CFRef<CFStringRef>::adopt(ABRecordCopyUniqueId(person));
        const auto [first, last] = contactsByPerson.equal_range(UnitsOf(uid.get()));
        std::transform(first, last, std::back_inserter(read.contacts), [](const auto& entry) { return entry.second; });
    });
    std::ranges::sort(read.contacts);
    return read;
}

std::vector<std::u16string> WordsOf(const std::u16string& text) {
    std::vector<std::u16string> words;
    for (std::size_t begin = 0; (begin = text.find_first_not_of(u' ', begin)) != std::u16string::npos;) {
        const std::size_t end = std::min(text.find(u' ', begin), text.size());
        words.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return words;
}

}  // namespace

void RecipientNamesFromPerson(ABPersonRef person, FaxRecipient& recipient) {
    const auto flags = CFRef<CFNumberRef>::adopt(static_cast<CFNumberRef>(ABRecordCopyValue(person, kABPersonFlags)));
    CFIndex bits = 0;
    CFNumberGetValue(flags.get(), kCFNumberCFIndexType, &bits);
    const bool isCompany = (bits & kABShowAsCompany) != 0;
    recipient.setFirstName(CopyText(person, isCompany ? kABOrganizationProperty : kABFirstNameProperty).get());
    recipient.setLastName(isCompany ? nullptr : CopyText(person, kABLastNameProperty).get());
}

FaxAddressBook ReadFaxAddressBook(ABAddressBookRef book) {
    const auto people = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllPeople(book));
    const auto groups = CFRef<CFArrayRef>::adopt(ABCopyArrayOfAllGroups(book));
    FaxAddressBook read;
    read.isReadable = people && groups;
    ForEachRecord(people.get(), [&](ABPersonRef person) { AppendContacts(person, read.contacts); });
    std::ranges::stable_sort(read.contacts, {}, &FaxContact::name);

    ContactsByPerson contactsByPerson;
    FaxContactGroup everybody;
    for (std::size_t i = 0; i < read.contacts.size(); ++i) {
        contactsByPerson.emplace(UnitsOf(read.contacts[i].recipient->uid()), i);
        everybody.contacts.push_back(i);
    }
    ForEachRecord(groups.get(), [&](ABGroupRef group) { read.groups.push_back(ReadGroup(group, contactsByPerson)); });
    std::ranges::stable_sort(read.groups, {}, [](const FaxContactGroup& group) { return Folded(group.name.get()); });
    read.groups.insert(read.groups.begin(), std::move(everybody));
    return read;
}

std::vector<std::size_t> FindFaxContacts(const FaxAddressBook& book, std::span<const std::size_t> groups,
                                         CFStringRef search) {
    std::vector<std::size_t> found;
    for (const std::size_t group : groups) {
        const auto& contacts = book.groups[group].contacts;
        found.insert(found.end(), contacts.begin(), contacts.end());
    }
    std::ranges::sort(found);
    found.erase(std::unique(found.begin(), found.end()), found.end());

    const std::vector<std::u16string> words = WordsOf(Folded(search));
    std::erase_if(found, [&](std::size_t contact) {
        return std::ranges::any_of(words, [&](const std::u16string& word) {
            return book.contacts[contact].searchText.find(word) == std::u16string::npos;
        });
    });
    return found;
}

std::vector<std::size_t> ChosenFaxContacts(std::size_t selectedGroups, const std::vector<std::size_t>& shown,
                                           const std::vector<std::size_t>& selected) {
    return selectedGroups == 1 && !selected.empty() ? selected : shown;
}
