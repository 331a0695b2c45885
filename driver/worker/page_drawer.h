// Pictures of pages, drawn in the background by a program of its own (tavro-pictures), and kept as long as there is
// room for them.
#pragma once

#include "driver/worker/drawing_client.h"

#include <compare>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

/// A page's picture that somebody wants.
struct PageWish {
    std::shared_ptr<const DrawnDocument> document;
    PageView view;
};

struct PagePicture {
    std::shared_ptr<const Pixels> pixels;  // null while there is none
    bool isAsWished = false;               // else it is of another size, for as long as there is no better one
    PageFault fault = PageFault::none;

    bool operator==(const PagePicture&) const = default;
};

class PageDrawer {
public:
    /// Pictures of 420 by 540 pixels, as a preview of that size shows them, have 0.9 MB: there is room for those of 70
    /// pages, or of 17 where a pixel is a half. What is wished for beyond that is not drawn.
    static constexpr std::size_t kRoom = std::size_t{64} << 20;

    /// `worker` is the program. It is started when there is something to draw.
    explicit PageDrawer(std::string worker, const DrawLimits& limits = {}, std::size_t room = kRoom);
    /// Ends the program; waits for that only.
    ~PageDrawer();
    PageDrawer(const PageDrawer&) = delete;
    PageDrawer& operator=(const PageDrawer&) = delete;

    /// All that is wanted from now on, the most urgent first: what was wished for earlier and is not among it is not
    /// drawn any more, not even to its end.
    void wish(std::vector<PageWish> wishes);

    /// What there is of a page now; waits for nothing.
    [[nodiscard]] PagePicture find(const PageWish& wish) const;

    /// Readable when there are new pictures or faults.
    [[nodiscard]] int newsDescriptor() const { return news_.get(); }
    /// Whether there were new ones since it was last asked.
    bool takeNews();

private:
    using Page = std::pair<std::uint32_t, int>;  // of a document's number; all of the document is kWholeDocument
    struct Key {
        Page page;
        double partWidth;
        double partHeight;
        int width;
        int height;

        auto operator<=>(const Key&) const = default;
    };
    struct Kept {
        std::shared_ptr<const Pixels> pixels;
        std::uint64_t lastWished;
    };
    static constexpr int kWholeDocument = -1;

    static Key keyOf(const PageWish& wish);
    void run();
    // These with the lock.
    [[nodiscard]] const PageWish* next() const;
    [[nodiscard]] PageFault faultOf(const Page& page) const;
    [[nodiscard]] bool isWished(const Key& key) const;
    void keep(const PageWish& wish, PageDrawing drawing);

    const std::size_t room_;
    Descriptor wake_;
    Descriptor news_;
    DrawingClient client_;  // the thread's
    mutable std::mutex mutex_;
    bool isEnding_ = false;
    std::vector<PageWish> wishes_;
    std::map<Key, Kept> kept_;
    std::map<Page, PageFault> faults_;
    std::size_t used_ = 0;
    std::uint64_t wishNumber_ = 0;
    std::thread thread_;
};
