// The documents that the dialog prints, each as a job. One of them is shown.
#pragma once

#include "host/job/document.h"
#include "platform/foundation/CFBundle.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Windows.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class DialogDocuments {
public:
    struct Setup {
        std::vector<std::string> paths;
        std::unique_ptr<OpeningDocument> first;  // of the paths
        DocumentPrograms programs;
        bool scripted = false;  // nobody could answer while the program waits
    };
    /// What the dialog does for them.
    struct Dialog {
        std::function<Size()> paper;                   // of the job
        std::function<void(const Document&)> show;     // a document, which may have no pages yet
        std::function<void(const std::string&)> tell;  // how far it is; empty for a document that is there
        std::function<void(const Failure&)> giveUp;    // the only document cannot be printed
    };
    enum class Brought { ready, failed, cancelled };

    /// The window and the bundle of its texts must outlive this.
    DialogDocuments(WindowRef window, CFBundleRef texts, Setup setup, Dialog dialog);
    ~DialogDocuments();
    DialogDocuments(const DialogDocuments&) = delete;
    DialogDocuments& operator=(const DialogDocuments&) = delete;

    /// The window is on the screen: goes on with a first document that is not there yet.
    void begin();
    [[nodiscard]] std::size_t count() const { return slots_.size(); }
    [[nodiscard]] std::size_t shown() const { return shown_; }
    /// Shows the document that the user has chosen.
    void choose();

    /// Shows a document and waits for it, in a window; a password is asked for. `fault` is why it cannot be printed.
    Brought bring(std::size_t index, std::string* fault);
    /// What is left to print when these are. One at least stays.
    void drop(const std::vector<bool>& printed);

private:
    struct Slot {
        std::string path;
        std::unique_ptr<OpeningDocument> opening;  // null until it is shown
    };

    OpeningDocument& show(std::size_t index);
    void fillMenu();
    void look();
    Brought settle(OpeningDocument* opening, std::string* fault);

    WindowRef window_;
    CFBundleRef texts_;
    std::vector<Slot> slots_;
    DocumentPrograms programs_;
    bool isScripted_;
    Dialog dialog_;
    std::size_t shown_ = 0;
    bool isArrived_ = true;  // the one that is shown, or why it does not
    std::chrono::steady_clock::time_point since_;
    EventLoopTimerRef timer_ = nullptr;
};
