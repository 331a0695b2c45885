// The user's address book: people, and groups of people.
//
// It is the desktop's own address book (evolution-data-server) where the session's bus offers one that answers within
// three seconds, else the file contacts.vcf in the user's data folder, in the vCard format (RFC 2426, with the KIND and
// MEMBER of RFC 6350), which other programs may read and write too. Which one is decided when the address book is first
// asked for. A card that is not changed here keeps every byte, and a changed one every property that is unknown here.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/foundation/CFString.h"

using ABAddressBookRef = class AddressBook*;
/// A person or a group; counted.
using ABRecordRef = struct ABRecordObject*;
using ABPersonRef = ABRecordRef;
using ABGroupRef = ABRecordRef;
/// A list of values, each with a label; counted.
using ABMultiValueRef = const struct ABMultiValueObject*;
using ABMutableMultiValueRef = struct ABMultiValueObject*;

#define kABPersonRecordType CFSTR("ABPerson")

// Properties of people; strings, unless the row says otherwise.
#define kABFirstNameProperty CFSTR("First")
#define kABLastNameProperty CFSTR("Last")
#define kABOrganizationProperty CFSTR("Organization")
#define kABPhoneProperty CFSTR("Phone")        // multi-value
#define kABEmailProperty CFSTR("Email")        // multi-value
#define kABPersonFlags CFSTR("ABPersonFlags")  // number, the kABShowAs... below; cannot be set
// Of groups.
#define kABGroupNameProperty CFSTR("GroupName")

/// The bit of the person flags that marks a company.
inline constexpr CFIndex kABShowAsCompany = 1;

// Labels in multi-values. Another program may have given others, which are texts for the user; an empty label says
// nothing.
#define kABPhoneWorkLabel CFSTR("Work")
#define kABPhoneHomeLabel CFSTR("Home")
#define kABPhoneMobileLabel CFSTR("Mobile")
#define kABPhonePagerLabel CFSTR("Pager")
#define kABPhoneWorkFAXLabel CFSTR("WorkFAX")
#define kABPhoneHomeFAXLabel CFSTR("HomeFAX")
#define kABPhoneOtherFAXLabel CFSTR("OtherFAX")
#define kABEmailWorkLabel CFSTR("Work")
#define kABEmailHomeLabel CFSTR("Home")

enum ABPropertyType : CFIndex {
    kABErrorInProperty = 0,  // there is no such property
    kABStringProperty = 1,
    kABIntegerProperty = 2,
    kABMultiStringProperty = 257,
};

/// The user's address book, lent; never null.
ABAddressBookRef ABGetSharedAddressBook();

/// Adds a new record; it is kept from the next ABSave on. False for null, for a record that is there already, and when
/// the address book cannot be read.
Boolean ABAddRecord(ABAddressBookRef book, ABRecordRef record);

/// Writes what has been added and changed since the last time, all or nothing; a later call tries again. What other
/// programs have written meanwhile stays. A file that is no clean list of vCards is first copied to a new file beside
/// it, with a line on standard error.
Boolean ABSave(ABAddressBookRef book);

/// The record with that unique id, saved or not; the caller releases it. Null when there is none.
ABRecordRef ABCopyRecordForUniqueId(ABAddressBookRef book, CFStringRef uniqueId);

/// New arrays of all people and all groups, saved or not; the caller releases them. Null when the address book cannot
/// be read.
CFArrayRef ABCopyArrayOfAllPeople(ABAddressBookRef book);
CFArrayRef ABCopyArrayOfAllGroups(ABAddressBookRef book);

/// The type of a record type's property, kABErrorInProperty for one that is unknown.
ABPropertyType ABTypeOfProperty(ABAddressBookRef book, CFStringRef recordType, CFStringRef property);

/// Makes properties known that the program brings itself. The dictionary's keys are their names, in the form
/// "com.example.name", and its values their types as numbers; kABStringProperty is the only one supported. Returns how
/// many were new, or -1 for another type. Only people (kABPersonRecordType) can have such properties.
CFIndex ABAddPropertiesAndTypes(ABAddressBookRef book, CFStringRef recordType, CFDictionaryRef typesByName);

/// New records with a new unique id, not yet in the address book; the caller releases them.
ABPersonRef ABPersonCreate();
ABGroupRef ABGroupCreate();

/// The record's unique id, a new string; null for null.
CFStringRef ABRecordCopyUniqueId(ABRecordRef record);

/// The property's value, a new string, multi-value or number as its type says; the caller releases it. Null when the
/// record has none. A property that the program brings itself is found whether it was made known in this process or in
/// an earlier one. A person who is only known by the name that the card shows has it as the first name.
CFTypeRef ABRecordCopyValue(ABRecordRef record, CFStringRef property);

/// Sets a property; null removes it. False for a property that the record cannot have or a value of another type.
Boolean ABRecordSetValue(ABRecordRef record, CFStringRef property, CFTypeRef value);

/// Makes the person a member, once. False for null and for a record of the wrong kind.
Boolean ABGroupAddMember(ABGroupRef group, ABPersonRef person);

/// A new array of the group's people; the caller releases it. Members that the address book does not have are left out.
/// Null for what is no group, and when the address book cannot be read.
CFArrayRef ABGroupCopyArrayOfAllMembers(ABGroupRef group);

/// A new, empty multi-value; the caller releases it.
ABMutableMultiValueRef ABMultiValueCreateMutable();

/// Appends a string under a label. False, and nothing appended, for what is no string. The platform's identifier of
/// the new value is not supported and must be null.
Boolean ABMultiValueAdd(ABMutableMultiValueRef multiValue, CFTypeRef value, CFStringRef label, CFStringRef* identifier);

/// 0 for null.
CFIndex ABMultiValueCount(ABMultiValueRef multiValue);
/// The value and the label at a position, new strings; null outside of the multi-value.
CFTypeRef ABMultiValueCopyValueAtIndex(ABMultiValueRef multiValue, CFIndex index);
CFStringRef ABMultiValueCopyLabelAtIndex(ABMultiValueRef multiValue, CFIndex index);
