// What stands behind the installable options of a model, from the device feature database.
//
// A feature of the database is about an installable option when its "Installable" is true: "MainKeyword" names the
// option and "Models" the models that have it. A keyword of its syntax that means something for panels has "Installs"
// among its properties: a dictionary of the feature keys that panels ask for (core/installable_options.h), each with a
// dictionary that may hold "Name", the key of its name in the plug-in's texts, and "TicketValue", a number. Entries of
// other types are passed over.
#pragma once

#include "core/installable_options.h"
#include "platform/foundation/CFCollections.h"
#include "platform/foundation/CFRef.h"

#include <deque>
#include <string>
#include <vector>

class ModelFeatures {
public:
    /// Of a model by its name without the maker's, such as "ZR420". The database must be loaded.
    explicit ModelFeatures(CFStringRef model);
    ModelFeatures(const ModelFeatures&) = delete;
    ModelFeatures& operator=(const ModelFeatures&) = delete;

    /// Whether the database has anything of the model.
    bool isKnown() const { return isKnown_; }
    /// Whether the model has a feature of the database, such as a window of the plug-in that only some models have.
    bool has(CFStringRef feature) const;
    /// The rows, sorted by option, keyword and feature key, and the one that ends them; valid as long as this object.
    const InstalledFeature* table() const { return rows_.data(); }

private:
    bool isOfModel(CFDictionaryRef feature) const;
    void addOption(CFDictionaryRef feature);
    void addKeyword(const char* mainKeyword, CFStringRef keyword, CFDictionaryRef installs);
    const char* keep(CFTypeRef string);

    CFRef<CFStringRef> model_;
    bool isKnown_ = false;
    std::deque<std::string> texts_;  // which the rows point to
    std::vector<InstalledFeature> rows_;
};
