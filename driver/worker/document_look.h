// Looking at a document in a process of its own: what strangers made may crash the library that reads it, take all
// memory, or take for ever, but not in the program that the user sees.
#pragma once

#include "driver/pages/document.h"
#include "driver/worker/worker_process.h"
#include "platform/files/descriptor.h"

#include <optional>
#include <string>

/// What looking at a document may take. A million ordinary pages take 0.8 GB and some ten seconds.
struct LookLimits {
    int seconds = 30;  // of the processor's time
    int megabytes = 1024;
    int patience = 60;  // seconds that are waited for the result
};

/// A look that goes on while the program does something else. It ends with the object, and with the program.
class DocumentLook {
public:
    /// Has the program `worker` (tavro-look) look at an open plain file. The password reaches it in no way that others
    /// can see.
    DocumentLook(const std::string& worker, int document, const std::string& password = {},
                 const LookLimits& limits = {});
    DocumentLook(const DocumentLook&) = delete;
    DocumentLook& operator=(const DocumentLook&) = delete;

    /// Readable when the result is there, or a part of it; -1 when there will be none.
    [[nodiscard]] int descriptor() const { return report_.get(); }
    /// Waits for the result, which is there once. Nothing, with the reason.
    [[nodiscard]] std::optional<DocumentPages> finish(std::string* reason);

private:
    int start(int document, const std::string& password);

    std::string worker_;
    LookLimits limits_;
    std::string fault_;
    Descriptor report_;
    WorkerProcess process_;
};
