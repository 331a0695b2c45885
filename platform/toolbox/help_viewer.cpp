// The window that shows help pages, and the way to the user's browser.

#include "platform/foundation/CFRef.h"
#include "platform/foundation/locale_digits.h"
#include "platform/toolbox/Help.h"
#include "platform/toolbox/help_book.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QDesktopServices>
#include <QShortcut>
#include <QStyle>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>
#include <cstdio>

namespace {

bool openInBrowser(const QUrl& url) {
    if (toolboxState().scripted) {
        std::printf("open %s\n", qPrintable(url.toString(QUrl::FullyEncoded)));
        std::fflush(stdout);
        return true;
    }
    return QDesktopServices::openUrl(url);
}

/// Shows pages of help books. Nothing outside of them is read or opened, whatever a page asks for.
class HelpBrowser final : public QTextBrowser {
public:
    HelpBrowser() {
        setOpenLinks(false);
        connect(this, &QTextBrowser::anchorClicked, this,
                [this](const QUrl& link) { follow(source().resolved(link)); });
    }

protected:
    QVariant loadResource(int type, const QUrl& name) override {
        const QUrl url = source().resolved(name);
        if (!isHelpFile(url)) {
            return {};
        }
        const QVariant read = QTextBrowser::loadResource(type, url);
        const bool isPage = type == QTextDocument::HtmlResource && read.isValid();
        return isPage ? withDigitsOfLocale(QString::fromUtf8(read.toByteArray())) : read;
    }

private:
    void follow(const QUrl& url) {
        if (isHelpFile(url)) {
            setSource(url);
        }
    }
};

/// The one help window. It stays usable while a dialog is modal, since help is most needed there.
class HelpViewer final : public QWidget {
public:
    HelpViewer() {
        auto* tools = new QToolBar;
        const auto add = [&](QStyle::StandardPixmap icon, const QKeySequence& key, auto method) {
            QAction* action = tools->addAction(style()->standardIcon(icon), {}, browser_, method);
            action->setShortcut(key);
            action->setToolTip(key.toString(QKeySequence::NativeText));
            return action;
        };
        QAction* back = add(QStyle::SP_ArrowBack, QKeySequence::Back, &QTextBrowser::backward);
        QAction* forward = add(QStyle::SP_ArrowForward, QKeySequence::Forward, &QTextBrowser::forward);
        add(QStyle::SP_DirHomeIcon, Qt::ALT | Qt::Key_Home, [this] { browser_->setSource(start_); });
        connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
        connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
        connect(browser_, &QTextBrowser::sourceChanged, this, [this] { setWindowTitle(browser_->documentTitle()); });
        new QShortcut(QKeySequence::Cancel, this, this, &QWidget::close);
        back->setEnabled(false);
        forward->setEnabled(false);

        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins({});
        layout->setSpacing(0);
        layout->addWidget(tools);
        layout->addWidget(browser_);
        resize(fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 36);
    }

    void open(const QUrl& page, const QUrl& start) {
        start_ = start;
        browser_->setSource(page);
        create();
        standBefore(QApplication::activeModalWidget());
        show();
        raise();
        activateWindow();
    }

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::WindowBlocked) {
            // Not now: Qt is just going through its windows.
            QMetaObject::invokeMethod(
                this, [this] { standBefore(QApplication::activeModalWidget()); }, Qt::QueuedConnection);
        }
        return QWidget::event(event);
    }

private:
    /// A window that belongs to the modal one is not blocked by it.
    void standBefore(const QWidget* modal) {
        QWindow* front = modal ? modal->windowHandle() : nullptr;
        if (front && front != windowHandle()->transientParent()) {
            windowHandle()->setTransientParent(front);
        }
    }

    HelpBrowser* const browser_ = new HelpBrowser;
    QUrl start_;
};

OSStatus showPage(const QString& book, const QString& page) {
    const std::optional<QUrl> url = helpPage(book, page);
    if (!url) {
        return fnfErr;
    }
    static HelpViewer& viewer = *new HelpViewer;  // as long as the process, as the application object is
    viewer.open(*url, helpPage(book, {}).value_or(*url));
    return noErr;
}

}  // namespace

OSStatus AHLookupAnchor(CFStringRef book, CFStringRef anchor) {
    return anchor ? showPage(toQString(book), toQString(anchor)) : paramErr;
}

OSStatus AHGotoPage(CFStringRef book, CFStringRef page, CFStringRef anchor) {
    QString place = toQString(page);
    if (anchor) {
        place += u'#' + toQString(anchor);
    }
    return showPage(toQString(book), place);
}

OSStatus LSOpenCFURLRef(CFURLRef url, CFURLRef* launched) {
    if (!url) {
        return paramErr;
    }
    if (!openInBrowser(QUrl(toQString(CFURLGetString(url))))) {
        return fnfErr;
    }
    if (launched) {
        *launched = static_cast<CFURLRef>(CFRetain(url));
    }
    return noErr;
}
