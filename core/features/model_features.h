// What a model of the product line is, from the device feature database.
//
// "Models", beside "Features", has what is true of a model as a whole: "Like", another model whose features it has too;
// "Lacks", those that it has not all the same; "Panels", the getters of its panels in the order of the menu;
// "Extensions", see extensions.h; "Pictures", see device_mimic.cpp. What the model itself says goes before what the one
// says that it is like.
//
// A feature belongs to the models of its "Models". It is about an installable option when its "Installable" is true:
// "MainKeyword" names the option. A keyword of its syntax that means something for panels has "Installs" among its
// properties: a dictionary of the feature keys that panels ask for (core/features/installable_options.h), each with a
// dictionary that may hold "Name", the key of its name in the plug-in's texts, and "TicketValue", a number.
//
// Entries of other types are passed over.
#pragma once

#include "core/features/installable_options.h"
#include "platform/foundation/CFCollections.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

class ModelFeatures {
public:
    /// Of a model by its name without the maker's, such as "ZR840", which must outlive this. The database must be
    /// loaded.
    explicit ModelFeatures(CFStringRef model);
    ModelFeatures(const ModelFeatures&) = delete;
    ModelFeatures& operator=(const ModelFeatures&) = delete;

    /// Whether the database has anything of the model.
    bool isKnown() const { return isKnown_; }
    /// Whether the model has a feature of the database, such as a window of the plug-in that only some models have.
    bool has(CFStringRef feature) const;
    /// The features of the model about its installable options, lent by the database.
    const std::vector<CFDictionaryRef>& options() const { return options_; }
    /// The feature of the model about a main keyword, lent; null when it has none.
    CFDictionaryRef feature(CFStringRef mainKeyword) const;
    /// A list that the database has of the model, lent; null when it has none.
    CFArrayRef list(CFStringRef key) const;
    /// The rows, sorted by option, keyword and feature key, and the one that ends them; valid as long as this object.
    const InstalledFeature* table() const { return rows_.data(); }

private:
    std::optional<std::size_t> distance(CFDictionaryRef feature) const;
    void addOption(const char* mainKeyword, CFDictionaryRef feature);
    void addKeyword(const char* mainKeyword, CFStringRef keyword, CFDictionaryRef installs);
    const char* keep(CFTypeRef string);

    std::vector<CFStringRef> lineage_;  // the model, the one that it is like, and so on; lent by the database
    bool isKnown_ = false;
    std::vector<CFDictionaryRef> options_;
    std::deque<std::string> texts_;  // which the rows point to
    std::vector<InstalledFeature> rows_;
};
