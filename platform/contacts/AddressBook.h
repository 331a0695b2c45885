// The user's address book: people, and groups of people.
//
// It is the file contacts.vcf in the user's data folder, in the vCard format (RFC 2426, with the KIND and MEMBER of
// RFC 6350), which other programs may read and write too. A card that is not changed here keeps every byte.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/foundation/CFString.h"

using ABAddressBookRef = class AddressBook*;
/// A person or a group; counted.
using ABRecordRef = struct ABRecordObject*;
using ABPersonRef = ABRecordRef;
using ABGroupRef = ABRecordRef;
/// A list of values, each with a label; counted.
using ABMutableMultiValueRef = struct ABMultiValueObject*;

#define kABPersonRecordType CFSTR("ABPerson")

// Properties of people; strings, unless the row says otherwise.
#define kABFirstNameProperty CFSTR("First")
#define kABOrganizationProperty CFSTR("Organization")
#define kABPhoneProperty CFSTR("Phone")  // multi-value
#define kABEmailProperty CFSTR("Email")  // multi-value
// Of groups.
#define kABGroupNameProperty CFSTR("GroupName")

// Labels in multi-values.
#define kABPhoneWorkLabel CFSTR("Work")
#define kABPhoneWorkFAXLabel CFSTR("WorkFAX")
#define kABEmailWorkLabel CFSTR("Work")

enum ABPropertyType : CFIndex {
    kABErrorInProperty = 0,  // there is no such property
    kABStringProperty = 1,
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

/// Sets a property; null removes it. False for a property that the record cannot have or a value of another type.
Boolean ABRecordSetValue(ABRecordRef record, CFStringRef property, CFTypeRef value);

/// Makes the person a member, once. False for null and for a record of the wrong kind.
Boolean ABGroupAddMember(ABGroupRef group, ABPersonRef person);

/// A new, empty multi-value; the caller releases it.
ABMutableMultiValueRef ABMultiValueCreateMutable();

/// Appends a string under a label. False, and nothing appended, for what is no string. The platform's identifier of
/// the new value is not supported and must be null.
Boolean ABMultiValueAdd(ABMutableMultiValueRef multiValue, CFTypeRef value, CFStringRef label, CFStringRef* identifier);
