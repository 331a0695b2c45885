// A device profile of a test's own.
#pragma once

#include "core/features/feature_database.h"
#include "model/settings/plugin_state.h"
#include "tests/support/test_bundle.h"

#include <gtest/gtest.h>
#include <string>

/// The feature database of a profile in a bundle that takes the plug-in's place.
class ProfileTest : public testing::Test {
protected:
    void load(const std::string& profile) {
        bundle_.add("Resources/Device Profile.plist", profile);
        SetPDEBundle(bundle_.bundle());
        TDPInitialize();
    }
    void TearDown() override {
        TDPFinalize();
        SetPDEBundle(nullptr);
    }

    TestBundle bundle_;
};
