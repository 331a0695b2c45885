// Paper on the screen: its summary in a text view, its picture on a pane.
#pragma once

#include "model/stock/stock.h"
#include "platform/toolbox/Controls.h"
#include "platform/toolbox/Events.h"

/// Shows the stock's summary, a line each for what is set. A stock of which nothing is set shows that the job's paper
/// is used, or the printer's own for the job itself; no stock shows nothing. paramErr for a null bundle or view.
OSStatus ShowStockSummary(CFBundleRef bundle, ControlRef textView, const Stock* stock, JobContext context);

/// Answers the draw event of a pane: paints the pictures that make the stock over each other. Its data is a
/// _StockMenuCommandEventHandlerData (model/stock_dialogs/stock_menu.h). Not handled, so that what else draws there
/// does so too.
OSStatus StockIconEventHandler(EventHandlerCallRef next, EventRef event, void* userData);
