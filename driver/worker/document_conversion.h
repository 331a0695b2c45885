// A PDF made of a document that is none, by a program of its own that starts others for it.
#pragma once

#include "driver/worker/worker_process.h"
#include "platform/files/descriptor.h"

#include <string>
#include <vector>

/// What making it may take.
struct ConversionLimits {
    int seconds = 300;     // from the moment when the document is there
    int megabytes = 1024;  // of the document, where it comes through a pipe, and of the PDF
};

/// Goes on while the program does something else. It ends with the object, and with the program.
class DocumentConversion {
public:
    /// Has the program `worker` (tavro-convert) make a PDF of a document, an open file or a pipe, that is called so.
    /// What has no paper of its own is laid on one of these points.
    DocumentConversion(const std::string& worker, int document, const std::string& name, double width, double height,
                       const ConversionLimits& limits = {});
    /// Waits until all that was started has ended.
    ~DocumentConversion();
    DocumentConversion(const DocumentConversion&) = delete;
    DocumentConversion& operator=(const DocumentConversion&) = delete;

    /// Readable when the result is there; -1 when there will be none.
    [[nodiscard]] int descriptor() const { return report_.get(); }
    /// Waits for the result, which is there once: an open file that has no name. None, with the reason.
    [[nodiscard]] Descriptor finish(std::string* reason);

private:
    int start(int document, std::vector<std::string> arguments);

    std::string worker_;
    std::string fault_;
    Descriptor made_;
    Descriptor report_;
    WorkerProcess process_;
};
