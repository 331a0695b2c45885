// The maker's plug-in: loaded once, started for each printer that is chosen. It has one extension, or more where the
// printer has them: then one is shown at a time.
#pragma once

#include "host/dialog/extension.h"
#include "host/settings/result.h"
#include "platform/foundation/CFPlugIn.h"

#include <memory>
#include <string>
#include <vector>

class PluginHost {
public:
    /// Loads the bundle and asks its factory for the print dialog extension. The failure names the bundle, or the file
    /// in it, and the reason.
    static Result<std::unique_ptr<PluginHost>> load(const std::string& path);
    ~PluginHost();
    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;

    const std::string& path() const { return path_; }

    /// Whether a start succeeded, or why not.
    enum class Start { started, refused };
    /// Starts the extension that the factory makes in a new pane inside `place`, then the others that the printer has,
    /// and shows the one that was shown last. The first may refuse the printer, as one of another maker; nothing of the
    /// plug-in is then left in the window. The session must live until stop().
    Start start(ControlRef place, PMPrintSession session);
    /// Ends what start() began, with the status with which the dialog ends. Harmless when nothing was started.
    void stop(OSStatus status);

    /// Those that were started, the factory's first.
    std::size_t count() const { return running_.size(); }
    CFStringRef title(std::size_t extension) const { return running_[extension].extension->title(); }
    std::size_t shown() const { return shown_; }
    /// Shows another one. The one that is left writes its controls into the tickets, all others read theirs anew. True
    /// when the one that is left had the keyboard's focus, which then is nowhere.
    bool show(std::size_t extension);

    /// Brings controls and tickets together, those that are shown last, so that their values win where extensions share
    /// items; does nothing when nothing was started.
    void copyTicketsToControls();
    void copyControlsToTickets();

    /// Opens a page of the plug-in's help book, also where nothing was started: much of it is of every printer. The
    /// status says why none is shown.
    OSStatus showHelp(CFStringRef page) const;

private:
    /// The name by which it is loaded is empty for the factory's.
    struct Running {
        std::string getter;
        std::unique_ptr<Extension> extension;
    };

    PluginHost(std::string path, CFRef<CFPlugInRef> plugin, PDEInterface* interface)
        : path_(std::move(path)), plugin_(std::move(plugin)), interface_(interface) {}
    void startOthers(ControlRef place, PMPrintSession session);
    template <typename Act>
    void eachShownLast(Act act);

    std::string path_;
    CFRef<CFPlugInRef> plugin_;
    PDEInterface* interface_;
    std::vector<Running> running_;
    std::size_t shown_ = 0;
    std::string shownGetter_;  // which outlives a session
};
