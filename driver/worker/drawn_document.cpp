#include "driver/worker/drawn_document.h"

#include "platform/files/plain_file.h"
#include "platform/foundation/message.h"
#include "platform/printing/private_file.h"

#include <atomic>
#include <cerrno>
#include <system_error>

#include <fcntl.h>

namespace {

std::uint32_t nextNumber() {
    static std::atomic<std::uint32_t> last = 0;
    return ++last;
}

}  // namespace

DrawnDocument::DrawnDocument(Descriptor file, std::string password)
    : number_(nextNumber()), file_(std::move(file)), password_(std::move(password)) {}

std::shared_ptr<const DrawnDocument> DrawnDocument::open(const std::string& path, const std::string& password,
                                                         std::string* reason) {
    Descriptor file = openPlainFile(path, INT64_MAX);
    if (!file) {
        *reason = readFault(errno, INT64_MAX);
        return nullptr;
    }
    return std::shared_ptr<const DrawnDocument>(new DrawnDocument(std::move(file), password));
}

std::shared_ptr<const DrawnDocument> DrawnDocument::keep(std::string_view pdf, std::string* reason) {
    PrivateFile kept(PrivateFile::Place::memory);
    kept.write(pdf);
    Descriptor file(kept.error() == 0 ? fcntl(kept.descriptor(), F_DUPFD_CLOEXEC, 0) : -1);
    if (!file) {
        *reason = systemMessage(kept.error() == 0 ? errno : kept.error());
        return nullptr;
    }
    return std::shared_ptr<const DrawnDocument>(new DrawnDocument(std::move(file), {}));
}
