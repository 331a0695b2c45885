#include "driver/proof/device_events.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <string_view>

namespace {

/// What is asked of the finisher, not of a sheet.
constexpr std::array<std::string_view, 12> kFinishing{"Staple",  "StapleDetails",  "Fold", "FoldDetails",
                                                      "Punch",   "PunchDetails",   "Bind", "BindDetails",
                                                      "Booklet", "BookletDetails", "Jog",  "OutputType"};

bool isFinishing(const std::string& key) {
    return std::ranges::find(kFinishing, key) != kFinishing.end();
}

/// What a null or false wish leaves undone.
bool isNothing(const std::string& value) {
    return value.empty() || value == "0" || value == "false" || value == "--nostringval--" || value == "null";
}

/// The way of paper through a printer: each page comes onto the next side; a sheet that cannot take it is put out.
class PaperPath {
public:
    explicit PaperPath(Proof* proof) : proof_(*proof) {}

    void take(const DeviceEvent& event) {
        switch (event.kind) {
            case DeviceEvent::Kind::set:
                set(event.key, event.value);
                break;
            case DeviceEvent::Kind::page:
                print(event);
                break;
            case DeviceEvent::Kind::error:
                proof_.errors.push_back(event.value);
                break;
        }
    }

private:
    void set(const std::string& key, const std::string& value) {
        if (key == "NumCopies") {
            proof_.copies = std::max(std::atoi(value.c_str()), 1);
        } else if (key == "Collate") {
            proof_.isCollated = value != "false";
        } else if (isFinishing(key)) {
            proof_.finishing[key] = value;
        } else if (isNothing(value) && !(key == "MediaPosition" && value == "0")) {  // which is the first tray
            device_.erase(key);
        } else {
            device_[key] = value;
        }
    }

    void print(const DeviceEvent& page) {
        ProofSide side;
        side.isBlank = page.right <= page.left;
        side.left = page.left;
        side.bottom = page.bottom;
        side.right = page.right;
        side.top = page.top;
        side.text = page.text;
        side.tones = page.tones;
        if (isWaiting_ && proof_.sheets.back().device == device_) {
            proof_.sheets.back().side2 = side;
            isWaiting_ = false;
            return;
        }
        ProofSheet sheet;
        sheet.device = device_;
        sheet.isTwoSided = device_.contains("Duplex");
        sheet.isTumbled = sheet.isTwoSided && device_.contains("Tumble");
        sheet.side1 = side;
        proof_.sheets.push_back(std::move(sheet));
        isWaiting_ = proof_.sheets.back().isTwoSided;
    }

    Proof& proof_;
    std::map<std::string, std::string> device_;
    bool isWaiting_ = false;  // the last sheet, for its second side
};

}  // namespace

void printEvents(const std::vector<DeviceEvent>& events, Proof* proof) {
    PaperPath way(proof);
    std::ranges::for_each(events, [&way](const DeviceEvent& event) { way.take(event); });
}
