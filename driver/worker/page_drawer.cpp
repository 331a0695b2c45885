#include "driver/worker/page_drawer.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include <poll.h>
#include <sys/eventfd.h>

namespace {

std::size_t bytesOf(const PageView& view) {
    return static_cast<std::size_t>(view.width) * static_cast<std::size_t>(view.height) * sizeof(std::uint32_t);
}

bool isDrawable(const PageView& view) {
    return std::min(view.width, view.height) >= 1 && std::max(view.width, view.height) <= kLongestPictureSide;
}

Descriptor makeEvent() {
    return Descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
}

}  // namespace

PageDrawer::PageDrawer(std::string worker, const DrawLimits& limits, std::size_t room)
    : room_(room), wake_(makeEvent()), news_(makeEvent()), client_(std::move(worker), limits) {
    thread_ = std::thread(&PageDrawer::run, this);
}

PageDrawer::~PageDrawer() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    eventfd_write(wake_.get(), 1);
    thread_.join();
}

PageDrawer::Key PageDrawer::keyOf(const PageWish& wish) {
    const PageView& view = wish.view;
    return {{wish.document->number(), view.page}, view.partWidth, view.partHeight, view.width, view.height};
}

void PageDrawer::wish(std::vector<PageWish> wishes) {
    std::erase_if(wishes, [](const PageWish& wish) { return !wish.document || !isDrawable(wish.view); });
    {
        const std::lock_guard lock(mutex_);
        wishes_ = std::move(wishes);
        ++wishNumber_;
        for (const PageWish& wish : wishes_) {
            if (const auto kept = kept_.find(keyOf(wish)); kept != kept_.end()) {
                kept->second.lastWished = wishNumber_;
            }
        }
    }
    eventfd_write(wake_.get(), 1);
}

PagePicture PageDrawer::find(const PageWish& wish) const {
    if (!wish.document) {
        return {};
    }
    Key key = keyOf(wish);
    const std::lock_guard lock(mutex_);
    if (const auto kept = kept_.find(key); kept != kept_.end()) {
        return {kept->second.pixels, true};
    }
    PagePicture found;
    found.fault = faultOf(key.page);
    key.width = 0;
    for (auto kept = kept_.lower_bound(key); kept != kept_.end(); ++kept) {
        const Key& other = kept->first;
        if (other.page != key.page || other.partWidth != key.partWidth || other.partHeight != key.partHeight) {
            break;
        }
        found.pixels = kept->second.pixels;  // the largest is the last
    }
    return found;
}

bool PageDrawer::takeNews() {
    eventfd_t count = 0;
    return eventfd_read(news_.get(), &count) == 0;
}

PageFault PageDrawer::faultOf(const Page& page) const {
    for (const Page& whose : {Page(page.first, kWholeDocument), page}) {
        if (const auto found = faults_.find(whose); found != faults_.end()) {
            return found->second;
        }
    }
    return PageFault::none;
}

/// The first wish that is not fulfilled and has room, together with all that are more urgent.
const PageWish* PageDrawer::next() const {
    std::size_t used = 0;
    for (const PageWish& wish : wishes_) {
        used += bytesOf(wish.view);
        if (used > room_) {
            return nullptr;
        }
        const Key key = keyOf(wish);
        if (!kept_.contains(key) && faultOf(key.page) == PageFault::none) {
            return &wish;
        }
    }
    return nullptr;
}

bool PageDrawer::isWished(const Key& key) const {
    return std::ranges::any_of(wishes_, [&key](const PageWish& wish) { return keyOf(wish) == key; });
}

void PageDrawer::run() {
    std::unique_lock lock(mutex_);
    while (!isEnding_) {
        const PageWish* const found = next();
        if (found == nullptr) {
            lock.unlock();
            pollfd waiting{wake_.get(), POLLIN, 0};
            poll(&waiting, 1, -1);
            eventfd_t ignored = 0;
            eventfd_read(wake_.get(), &ignored);
            lock.lock();
            continue;
        }
        const PageWish wish = *found;
        lock.unlock();
        const auto isUnwanted = [this, key = keyOf(wish)] {
            const std::lock_guard again(mutex_);
            return isEnding_ || !isWished(key);
        };
        PageDrawing drawing = client_.draw(wish.document, wish.view, wake_.get(), isUnwanted);
        lock.lock();
        keep(wish, std::move(drawing));
    }
}

void PageDrawer::keep(const PageWish& wish, PageDrawing drawing) {
    const Key key = keyOf(wish);
    if (drawing.fault != PageFault::none) {
        faults_[drawing.isFaultOfDocument ? Page(key.page.first, kWholeDocument) : key.page] = drawing.fault;
    } else if (drawing.picture) {
        used_ += drawing.picture->byteCount();
        kept_[key] = {std::make_shared<const Pixels>(std::move(*drawing.picture)), isWished(key) ? wishNumber_ : 0};
    } else {
        return;  // stopped
    }
    while (used_ > room_) {
        const auto oldest =
            std::ranges::min_element(kept_, {}, [](const auto& kept) { return kept.second.lastWished; });
        used_ -= oldest->second.pixels->byteCount();
        kept_.erase(oldest);
    }
    eventfd_write(news_.get(), 1);
}
