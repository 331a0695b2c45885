// What the gallery can open: panels, dialogs, and the bare windows of every nib.
#pragma once

#include "core/features/panel_interface.h"
#include "platform/printing/PMSession.h"

#include <optional>
#include <string>
#include <vector>

/// What a dialog works on: the records come from the ticket and, after OK, go back there.
struct PieceRecords {
    CFBundleRef bundle;  // the plug-in's
    PMTicketRef ticket;  // print settings
};

/// A panel has a getter, a dialog a function that runs it until it is closed.
struct Piece {
    const char* name;
    PanelInterfaceGetter panel;
    OSStatus (*runDialog)(const PieceRecords& records);
};

/// Null when no panel or dialog has the name.
const Piece* findPiece(const std::string& name);

std::vector<std::string> pieceNames();

/// "NIB/WINDOW" of every window of every nib in the bundle.
std::vector<std::string> nibWindowNames(CFBundleRef bundle);
/// Shows such a window, with nothing behind it, until it is closed.
OSStatus runNibWindow(CFBundleRef bundle, const std::string& name);
