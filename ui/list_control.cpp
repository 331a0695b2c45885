#include "ui/list_control.h"

void SetListCallbacks(ControlRef list, DataBrowserItemDataUPP data, DataBrowserItemNotificationUPP notification,
                      DataBrowserItemCompareUPP compare) {
    DataBrowserCallbacks callbacks{};
    callbacks.version = kDataBrowserLatestCallbacks;
    InitDataBrowserCallbacks(&callbacks);
    callbacks.u.v1 = {data, compare, notification};
    SetDataBrowserCallbacks(list, &callbacks);
}

std::vector<DataBrowserItemID> SelectedRows(ControlRef list) {
    ItemCount count = 0;
    GetDataBrowserItemCount(list, kDataBrowserNoItem, false, kDataBrowserItemIsSelected, &count);
    std::vector<DataBrowserItemID> rows(count);
    GetDataBrowserItems(list, kDataBrowserNoItem, false, kDataBrowserItemIsSelected, count, rows.data());
    return rows;
}

bool IsDeleteKey(EventRef event) {
    UniChar key = 0;
    GetEventParameter(event, kEventParamKeyUnicodes, typeUnicodeText, nullptr, sizeof key, nullptr, &key);
    return key == kBackspaceCharCode || key == kDeleteCharCode;
}
