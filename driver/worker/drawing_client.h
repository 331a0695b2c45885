// The program that draws pages, as the one that wants their pictures sees it.
#pragma once

#include "driver/worker/drawing_messages.h"
#include "driver/worker/drawn_document.h"
#include "driver/worker/worker_process.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

/// What drawing may take.
struct DrawLimits {
    int seconds = 4;  // of the processor's time, for a page
    int megabytes = 1024;
    int patience = 20;  // seconds that are waited for a page, on a machine that is busy
};

/// Why there is no picture of a page.
enum class PageFault : std::uint8_t {
    none,
    takesTooLong,
    crashes,  // it, or reading its document, ends the program that draws
    takesTooMuchMemory,
    isDamaged,  // it, or its document; or there is no such page
    needsPassword,
    isGone,         // its document's file is not there any more; for who opens documents to say
    cannotBeDrawn,  // by no fault of the document's: the program cannot be started, or was ended
};

/// A picture, or a fault, or none of them: it was stopped.
struct PageDrawing {
    std::optional<Pixels> picture;
    PageFault fault = PageFault::none;
    bool isFaultOfDocument = false;  // all pages have it
};

/// Draws page after page, in one thread. The program is started with the first page, and anew after each that ended it.
class DrawingClient {
public:
    DrawingClient(std::string worker, const DrawLimits& limits) : worker_(std::move(worker)), limits_(limits) {}

    /// Waits for the picture. When `wake`, an event descriptor, is written to, `isUnwanted` is asked; true stops it.
    PageDrawing draw(const std::shared_ptr<const DrawnDocument>& document, const PageView& view, int wake,
                     const std::function<bool()>& isUnwanted);

private:
    enum class Wait { answered, late, ended, stopped };
    struct Listener {
        int wake;
        const std::function<bool()>& isUnwanted;
    };

    bool start();
    int end();
    void forgetDocuments();
    /// Nothing when the worker is gone; `last` then says why.
    std::optional<PageDrawing> attempt(const std::shared_ptr<const DrawnDocument>& document, const PageView& view,
                                       const Listener& listener, Wait* last);
    Wait ask(const DrawingQuestion& question, const DrawnDocument* document, const Listener& listener,
             DrawingAnswer* answer);
    Wait wait(const Listener& listener);

    std::string worker_;
    DrawLimits limits_;
    Descriptor socket_;
    std::map<std::uint32_t, std::weak_ptr<const DrawnDocument>> opened_;  // by the worker
    int drawn_ = 0;                                                       // pages by this worker
    WorkerProcess process_;
};
