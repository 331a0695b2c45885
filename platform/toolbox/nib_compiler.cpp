// Compiles a window of a nib: tavro-nib-windows WINDOW.ui COMPILED. Run by the build.

#include "platform/toolbox/nib_element.h"

#include <QFile>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s WINDOW.ui COMPILED\n", argv[0]);
        return 2;
    }
    QFile designed(QString::fromLocal8Bit(argv[1]));
    QString reason;
    if (!designed.open(QIODevice::ReadOnly)) {
        reason = designed.errorString();
    } else if (const auto tree = readDesignerFile(&designed, &reason)) {
        QFile compiled(QString::fromLocal8Bit(argv[2]));
        const QByteArray data = compiledWindow(*tree);
        if (compiled.open(QIODevice::WriteOnly) && compiled.write(data) == data.size() && compiled.flush()) {
            return 0;
        }
        reason = compiled.errorString();
    }
    std::fprintf(stderr, "%s: %s\n", argv[1], reason.toLocal8Bit().constData());
    return 1;
}
