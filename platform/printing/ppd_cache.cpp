#include "platform/printing/ppd_cache.h"

#include "platform/files/file_stamp.h"

#include <mutex>

namespace {

struct OpenPPD {
    FileStamp stamp;
    std::weak_ptr<const PPDFile> file;
};

struct OpenPPDs {
    std::mutex mutex;
    std::map<std::string, OpenPPD> all;
};

OpenPPDs& openPPDs() {
    static auto* const open = new OpenPPDs;
    return *open;
}

}  // namespace

std::shared_ptr<const PPDFile> openPPDFile(const std::string& path, std::string* reason) {
    OpenPPDs& open = openPPDs();
    const std::lock_guard lock(open.mutex);
    auto& all = open.all;
    std::erase_if(all, [](const auto& entry) { return entry.second.file.expired(); });
    const auto stamp = stampOf(path);  // before it is read: a file that changes meanwhile is read again next time
    if (const auto known = all.find(path); known != all.end() && known->second.stamp == stamp) {
        return known->second.file.lock();
    }
    auto read = readPPDFile(path, reason);
    if (!read) {
        return nullptr;
    }
    auto file = std::make_shared<const PPDFile>(std::move(*read));
    if (stamp) {
        all.insert_or_assign(path, OpenPPD{*stamp, file});
    }
    return file;
}
