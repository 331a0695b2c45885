// The user's stores, each as a number that is written and read back.
#pragma once

#include <span>
#include <string>

/// What a store gives when it has been damaged, or holds a part of one number and a part of another.
inline constexpr int kDamaged = -1;

struct UserStore {
    const char* name;
    /// Writes that number, in content of some ten thousand bytes; false when the store says that it could not.
    bool (*save)(int number);
    /// The number that it has; 0 for none.
    int (*read)();
};

std::span<const UserStore> userStores();

/// Has all stores lie in that folder, which is made.
void putStoresInto(const std::string& folder);
