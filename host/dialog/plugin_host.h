// The maker's plug-in: loaded once, started for each printer that is chosen.
#pragma once

#include "host/dialog/pde_interface.h"
#include "host/settings/print_session.h"
#include "host/settings/result.h"
#include "platform/foundation/CFPlugIn.h"
#include "platform/foundation/CFRef.h"

#include <memory>
#include <string>

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
    /// Starts the extension in a new pane inside `place` and shows it. The extension refuses printers of other makers;
    /// nothing of it is then left in the window. The session must live until stop().
    Start start(ControlRef place, PMPrintSession session);
    /// Ends what start() began, with the status with which the dialog ends. Harmless when nothing was started.
    void stop(OSStatus status);

    /// Brings controls and tickets together; does nothing when nothing was started.
    void copyTicketsToControls() { sync(true); }
    void copyControlsToTickets() { sync(false); }

private:
    PluginHost(std::string path, CFRef<CFPlugInRef> plugin, PDEInterface* interface)
        : path_(std::move(path)), plugin_(std::move(plugin)), interface_(interface) {}
    PDEInterface::Table& operations() const { return *interface_->table; }
    void sync(bool ticketsToControls);

    std::string path_;
    CFRef<CFPlugInRef> plugin_;
    PDEInterface* interface_;
    PDEContext context_ = nullptr;
    PMPrintSession session_ = nullptr;
    ControlRef pane_ = nullptr;
    bool isOpen_ = false;
};
