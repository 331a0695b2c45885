// Qt's own print dialog on the default queue, to be timed beside ours: opens, tells when its first frame is on the
// screen and leaves.

#include <QApplication>
#include <QEvent>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>
#include <chrono>
#include <cstdio>

namespace {

/// Leaves when everything that the first paint event started has been painted.
class FirstFrame final : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            QTimer::singleShot(0, qApp, [] {
                const auto now = std::chrono::steady_clock::now().time_since_epoch();
                std::printf("first-frame %lld\n",
                            static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()));
                QCoreApplication::quit();
            });
        }
        return false;
    }
};

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QPrinter printer;
    QPrintDialog dialog(&printer);
    FirstFrame frame;
    dialog.installEventFilter(&frame);
    dialog.show();
    return QApplication::exec();
}
