// The column of the dialog that shows what will come out, side by side as somebody turns the sheets over.
#pragma once

#include "host/dialog/dialog_controls.h"
#include "host/dialog/preview_job.h"
#include "host/preview/shown_side.h"
#include "platform/toolbox/Events.h"
#include "platform/toolbox/Views.h"

#include <functional>
#include <memory>
#include <string>

class PreviewColumn {
public:
    /// `drawer` is the path of the program that draws pages. Window, document and the bundle of texts must outlive
    /// this.
    PreviewColumn(WindowRef window, CFBundleRef texts, const Document& document, std::string drawer);
    ~PreviewColumn();
    PreviewColumn(const PreviewColumn&) = delete;
    PreviewColumn& operator=(const PreviewColumn&) = delete;

    /// Before the window is shown. The column is there when the user wants it, the screen has room for it and there is
    /// a document.
    void arrange(bool isWanted);
    bool isWanted() const { return isWanted_; }
    bool isShown() const;

    /// The window is on the screen: from now on the column is filled. `whenDrawn` is called once, when the first
    /// picture is complete; it may be empty.
    void begin(std::function<void()> whenDrawn);
    /// Shows the session, which is lent until forget(). Costs next to nothing when nothing has changed.
    void show(const PrintSession& session);
    /// Another document, or more of it.
    void showDocument(const PrintSession& session);
    /// Says something in the place of the sheets; empty for nothing.
    void tell(const std::string& sentence);
    /// Another session follows.
    void forget();
    /// Takes what the user did with one of the column's controls; false for any other control.
    bool handleHit(SInt32 number);
    /// Waits until all pictures of the side that is shown are there, or cannot be.
    void finish();

private:
    static OSStatus handleSheet(EventHandlerCallRef next, EventRef event, void* self);
    static OSStatus handleNumberKey(EventHandlerCallRef next, EventRef event, void* self);

    ControlRef control(HostControl number) const { return hostControl(window_, number); }
    const SheetPlan& plan() const { return job_.sheets().plan; }
    bool isFilled() const {
        return drawer_ && session_ != nullptr && document_.pageCount > 0 && !plan().sheets.empty();
    }

    // Room
    bool hasRoom() const;
    void showBox() const;
    void toggle();

    // Turning
    void go(const ShownSide& side);
    bool handleKey(UniChar key);
    void showNumber() const;
    void showWords() const;
    void allowTurning() const;

    // Pictures
    SheetView viewOf(const ShownSide& side) const;
    bool measure();
    void wish() const;
    std::vector<PagePicture> picturesOfSide() const;
    void takeNews();
    void draw(CGContextRef context);
    void redraw();

    WindowRef window_;
    CFBundleRef texts_;
    std::string drawerPath_;
    const Document& document_;
    bool hasDocument_;  // or will have one
    PreviewJob job_;
    bool isWanted_ = true;
    double widthNeeded_ = 0;                 // by a window with this column
    int width_;                              // that the window gains with it
    const PrintSession* session_ = nullptr;  // lent; null before the first one, and after forget()
    ShownSide side_;
    SheetView size_;  // of the place for the picture
    std::function<void()> whenDrawn_;
    std::unique_ptr<PageDrawer> drawer_;  // null until the window is shown
    EventLoopDescriptorRef news_ = nullptr;
    struct ReleaseImage {
        void operator()(CGImageRef image) const { CGImageRelease(image); }
    };
    std::unique_ptr<OpaqueCGImageRef, ReleaseImage> image_;  // of the side; null when it is to be drawn anew
    std::vector<PagePicture> drawn_;                         // what it is made of
};
