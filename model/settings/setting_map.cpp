#include "model/settings/setting_map.h"

#include "platform/foundation/CFString.h"

namespace {

/// The row where a look-up by ticket value stops: with that value or with 0, else the end row.
const SettingMap* Scan(const SettingMap* map, SInt32 value) {
    const SettingMap* row = map;
    while (row->key != nullptr && row->ticketValue != value && row->ticketValue != 0) {
        ++row;
    }
    return row;
}

}  // namespace

CFIndex CountMaps(const SettingMap* map) {
    CFIndex count = 0;
    while (map[count].key != nullptr) {
        ++count;
    }
    return count;
}

SInt32 UIToTicket(const SettingMap* map, SInt32 item) {
    return map[item - 1].ticketValue;
}

SInt32 TicketToUI(const SettingMap* map, SInt32 value) {
    const SettingMap* row = Scan(map, value);
    return row->key == nullptr ? -1 : static_cast<SInt32>(row - map) + 1;
}

CFStringRef LocalizedKeyForTicketValue(const SettingMap* map, SInt32 value) {
    const SettingMap* row = Scan(map, value);
    return row->key == nullptr ? nullptr : CFStringMakeConstant(row->key);
}
