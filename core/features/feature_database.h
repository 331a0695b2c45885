// The device feature database: what the models of the product line can do, from the resource "Device Profile.plist".
//
// Its root has "Features", a dictionary of feature dictionaries by name. A feature has "Properties" (name to value) and
// "Syntax", which says how its value is written: under "Keyword" a dictionary of keyword dictionaries (each with its
// own "Properties" and perhaps "Default": true), under "Name" or "Number" a dictionary that may hold "Default". Beside
// "Features" the root may have "Models", dictionaries of what is true of a model as a whole
// (core/features/model_features.h).
//
// Everything that is handed out is lent and valid until TDPFinalize, arrays apart, which are new. While the database is
// not loaded, nothing is found.
#pragma once

#include "platform/foundation/CFCollections.h"

// The kinds of syntax.
#define kTDPSyntaxKeyword CFSTR("Keyword")
#define kTDPSyntaxName CFSTR("Name")
#define kTDPSyntaxNumber CFSTR("Number")

/// Finds the database in the plug-in's bundle unless it is loaded; the first query reads it. A missing or damaged file
/// leaves it unloaded.
void TDPInitialize();
/// The same with the file at an address, for programs that look at the plug-in's database from without.
void TDPInitializeFromFile(CFURLRef file);
void TDPFinalize();
/// Takes over the features and models of another file of that form, in the place of those of the same names; what was
/// lent before is no longer valid. False, and nothing is changed, when it cannot be read: the reason is then printed.
bool TDPAddProfile(CFURLRef file);

/// A feature by name; null when there is none.
CFDictionaryRef TDPGetFeature(CFStringRef name);
/// What is said of a model by its name without the maker's; null when nothing is.
CFDictionaryRef TDPGetModel(CFStringRef name);
/// A new array of the features that have the property with that value; with any value when it is null.
CFArrayRef TDPGetFeaturesWithPropertyAndValue(CFStringRef property, CFTypeRef value);
CFArrayRef TDPGetFeaturesWithProperty(CFStringRef property);

/// The feature's syntax of a kind; null when it has none.
CFDictionaryRef TDPGetFeatureSyntax(CFDictionaryRef feature, CFStringRef syntaxKind);
/// A value of the feature's properties; null when it has none.
CFTypeRef TDPGetFeatureProperty(CFDictionaryRef feature, CFStringRef property);
/// A new array of the feature's keyword dictionaries that have the property with that value.
CFArrayRef TDPGetKeywordsWithPropertyAndValue(CFDictionaryRef feature, CFStringRef property, CFTypeRef value);

/// The feature's default and the syntax that names it: the first keyword whose "Default" is the boolean true (the
/// keyword itself), else the "Default" of the name, else of the number. False, and nothing written, when there is none.
Boolean TDPGetFeatureDefaultValue(CFDictionaryRef feature, CFStringRef* syntaxKind, CFTypeRef* value);

/// A new property list from an XML file; null when it cannot be read or does not parse.
CFTypeRef CreatePropertiesFromXMLFile(CFURLRef url);
