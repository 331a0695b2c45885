#include "platform/printing/ppd_cache.h"

#include "platform/files/file_stamp.h"

namespace {

struct OpenPPD {
    FileStamp stamp;
    std::weak_ptr<const PPDFile> file;
};

std::map<std::string, OpenPPD>& openPPDs() {
    static auto* const all = new std::map<std::string, OpenPPD>;
    return *all;
}

}  // namespace

std::shared_ptr<const PPDFile> openPPDFile(const std::string& path, std::string* reason) {
    auto& all = openPPDs();
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
