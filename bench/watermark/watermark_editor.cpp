// The watermark editor's window, opened and drawn, beside Qt's own font dialog; and what speaks against each installed
// face, which the editor asks when its list of fonts opens, beside opening each face's file.
//
// usage: bench_watermark_editor BUNDLE

#include "watermark/editor/editor_dialog.h"
#include "watermark/editor/mark_values.h"

#include "bench/side_by_side.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFString.h"
#include "platform/foundation/CFURL.h"

#include <QApplication>
#include <QFile>
#include <QFontDialog>

namespace {

constexpr int kRounds = 21;

void openAndDraw(QDialog* dialog) {
    dialog->show();
    QApplication::processEvents();
    QApplication::processEvents();
    dialog->close();
}

std::size_t askAll() {
    MarkFonts fonts;
    std::size_t refused = 0;
    for (const QString& family : fonts.families()) {
        for (const QString& style : fonts.styles(family)) {
            refused += fonts.refusal(family, style) != FontRefusal::none ? 1 : 0;
        }
    }
    return refused;
}

std::size_t openAll() {
    std::size_t bytes = 0;
    for (const FontFace& face : InstalledFontFaces()) {
        QFile file(QString::fromStdString(face.path));
        bytes += file.open(QIODevice::ReadOnly) ? static_cast<std::size_t>(file.size()) : 0;
    }
    return bytes;
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const auto path =
        CFRef<CFStringRef>::adopt(CFStringCreateWithCString(nullptr, argc == 2 ? argv[1] : "", kCFStringEncodingUTF8));
    const auto url =
        CFRef<CFURLRef>::adopt(CFURLCreateWithFileSystemPath(nullptr, path.get(), kCFURLPOSIXPathStyle, true));
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
    if (!bundle) {
        std::fprintf(stderr, "usage: %s BUNDLE\n", argv[0]);
        return 2;
    }
    bench::compare(
        "the window, with its fonts", kRounds, "editor",
        [] {
            EditorDialog editor(StartOfEditing({}), nullptr);
            openAndDraw(&editor);
        },
        "QFontDialog",
        [] {
            QFontDialog dialog;
            dialog.setOption(QFontDialog::DontUseNativeDialog);
            openAndDraw(&dialog);
        });
    std::printf("%zu of %zu faces cannot be embedded\n", askAll(), InstalledFontFaces().size());
    std::size_t seen = 0;
    bench::compare(
        "all faces", kRounds, "ask", [&seen] { seen += askAll(); }, "open files", [&seen] { seen += openAll(); });
    return seen > 0 ? 0 : 1;
}
