// The two functions that the Watermark panel looks up in the bundle.

#include "watermark/editor/editor_dialog.h"
#include "watermark/editor/mark_values.h"

#include <QApplication>

#define EDITOR_EXPORT extern "C" __attribute__((visibility("default")))

/// Called once after loading. The windows' library is the platform's, which has made it ready.
EDITOR_EXPORT void InitializeCocoa() {}

/// 0 when the user accepted, with the result in the record; else the record is as it was.
EDITOR_EXPORT SInt32 editWatermark(WatermarkRecord* record, SInt32, CFBundleRef, SInt32) {
    if (record == nullptr) {
        return 1;
    }
    EditorDialog dialog(StartOfEditing(*record), QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) {
        return 1;
    }
    *record = dialog.result();
    return 0;
}
