// Nibs: windows made from the Designer files of a bundle.

#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/terminal_text.h"
#include "platform/toolbox/Windows.h"
#include "platform/toolbox/layout.h"
#include "platform/toolbox/nib_loader.h"
#include "platform/toolbox/objects.h"

#include <QDir>
#include <QFile>
#include <QLayout>
#include <cstdio>

/// A nib: a folder of windows, with the bundle that its texts are looked up in.
struct OpaqueIBNibRef {
    CFRef<CFBundleRef> bundle;
    QString name;
    QString folder;
};

OSStatus CreateNibReferenceWithCFBundle(CFBundleRef bundle, CFStringRef name, IBNibRef* nib) {
    if (bundle == nullptr || name == nullptr || nib == nullptr) {
        return paramErr;
    }
    const auto url = CFRef<CFURLRef>::adopt(CFBundleCopyResourceURL(bundle, name, CFSTR("nib"), nullptr));
    if (!url) {
        return kNibNotFoundErr;
    }
    *nib = new OpaqueIBNibRef{CFRef<CFBundleRef>::retain(bundle), toQString(name), toFilePath(url.get())};
    return noErr;
}

void DisposeNibReference(IBNibRef nib) {
    delete nib;
}

OSStatus CreateWindowFromNib(IBNibRef nib, CFStringRef name, WindowRef* window) {
    if (nib == nullptr || name == nullptr || window == nullptr) {
        return paramErr;
    }
    const QString path = QDir(nib->folder).filePath(toQString(name));
    QString reason;
    QWidget* widget = loadNibWindow(path, nib->bundle.get(), nib->name, &reason);
    if (widget == nullptr) {
        printLine(stderr, reason.toStdString());
        return kNibWindowNotFoundErr;
    }
    *window = new OpaqueWindowRef(widget);
    if (const QLayout* layout = widget->layout()) {
        widget->resize(widget->size().expandedTo(layout->totalSizeHint()));
    }
    activateLayouts(widget);
    return noErr;
}
