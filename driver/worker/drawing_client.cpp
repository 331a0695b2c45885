#include "driver/worker/drawing_client.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Kind = DrawingQuestion::Kind;
using Result = DrawingAnswer::Result;

/// A drawing that does not stop by itself is ended after that.
constexpr auto kPatienceWithStopping = 300ms;

int millisecondsUntil(Clock::time_point end) {
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    return static_cast<int>(std::max<std::int64_t>(rest, 0));
}

PageFault faultOf(int status) {
    switch (endOf(status)) {
        case WorkerEnd::ranOutOfTime:
            return PageFault::takesTooLong;
        case WorkerEnd::crashed:
            return PageFault::crashes;
        case WorkerEnd::lostDocument:
            return PageFault::isDamaged;
        default:
            return PageFault::cannotBeDrawn;
    }
}

PageFault faultOf(Result result) {
    switch (result) {
        case Result::noMemory:
            return PageFault::takesTooMuchMemory;
        case Result::needsPassword:
            return PageFault::needsPassword;
        default:
            return PageFault::isDamaged;
    }
}

bool isWholePicture(const DrawingAnswer& answer, const Pixels& picture) {
    return answer.byteCount == picture.byteCount() && picture.byteCount() > 0;
}

}  // namespace

bool DrawingClient::start() {
    if (process_.isStarted()) {
        return true;
    }
    std::array<int, 2> ends;
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return false;
    }
    socket_ = Descriptor(ends[0]);
    const Descriptor other(ends[1]);
    // A worker that hangs in the middle of an answer is late, too.
    const timeval patience{limits_.patience, 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    setsockopt(socket_.get(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    return process_.start(worker_, {std::to_string(limits_.seconds), std::to_string(limits_.megabytes)}, other.get(),
                          other.get()) == 0;
}

int DrawingClient::end() {
    socket_ = Descriptor();
    opened_.clear();
    drawn_ = 0;
    return process_.end();
}

PageDrawing DrawingClient::draw(const std::shared_ptr<const DrawnDocument>& document, const PageView& view, int wake,
                                const std::function<bool()>& isUnwanted) {
    const Listener listener{wake, isUnwanted};
    for (bool isFirst = true;; isFirst = false) {
        if (!start()) {
            end();
            return {{}, PageFault::cannotBeDrawn};
        }
        Wait last = Wait::answered;
        const bool isFresh = drawn_ == 0;
        const bool wasOpened = opened_.contains(document->number());
        std::optional<PageDrawing> drawing = attempt(document, view, listener, &last);
        if (drawing && drawing->fault != PageFault::takesTooMuchMemory) {
            ++drawn_;
            return std::move(*drawing);
        }
        const bool isOpened = wasOpened || opened_.contains(document->number());
        const int status = end();
        if (last == Wait::stopped) {
            return {};
        }
        if (!drawing) {
            drawing = PageDrawing{{}, last == Wait::late ? PageFault::takesTooLong : faultOf(status), !isOpened};
        }
        // It may have suffered from what was drawn before, or from somebody else.
        const bool isWorthAnother =
            drawing->fault == PageFault::cannotBeDrawn || (!isFresh && drawing->fault != PageFault::takesTooLong);
        if (!isFirst || !isWorthAnother) {
            return std::move(*drawing);
        }
    }
}

std::optional<PageDrawing> DrawingClient::attempt(const std::shared_ptr<const DrawnDocument>& document,
                                                  const PageView& view, const Listener& listener, Wait* last) {
    forgetDocuments();
    DrawingAnswer answer{};
    if (!opened_.contains(document->number())) {
        DrawingQuestion question{Kind::open, document->number()};
        question.passwordSize =
            static_cast<std::uint32_t>(std::min<std::size_t>(document->password().size(), kLongestPassword));
        *last = ask(question, document.get(), listener, &answer);
        if (*last != Wait::answered) {
            return std::nullopt;
        }
        if (answer.result != Result::opened) {
            return PageDrawing{{}, faultOf(answer.result), true};
        }
        opened_.emplace(document->number(), document);
    }
    *last = ask({Kind::draw, document->number(), view}, nullptr, listener, &answer);
    if (*last != Wait::answered) {
        return std::nullopt;
    }
    if (answer.result == Result::stopped) {
        return PageDrawing{};
    }
    if (answer.result != Result::drawn) {
        return PageDrawing{{}, faultOf(answer.result)};
    }
    Pixels picture{view.width, view.height, {}};
    picture.values.resize(static_cast<std::size_t>(view.width) * static_cast<std::size_t>(view.height));
    if (!isWholePicture(answer, picture) || !receiveAll(socket_.get(), picture.values.data(), picture.byteCount())) {
        *last = Wait::ended;
        return std::nullopt;
    }
    return PageDrawing{std::move(picture)};
}

/// The worker need not keep what nobody will draw again.
void DrawingClient::forgetDocuments() {
    for (auto opened = opened_.begin(); opened != opened_.end();) {
        if (!opened->second.expired()) {
            ++opened;
            continue;
        }
        const DrawingQuestion question{Kind::close, opened->first};
        DrawingAnswer answer{};
        // What is wrong now is found by the question that follows.
        static_cast<void>(sendQuestion(socket_.get(), question) && receiveAll(socket_.get(), &answer, sizeof answer));
        opened = opened_.erase(opened);
    }
}

DrawingClient::Wait DrawingClient::ask(const DrawingQuestion& question, const DrawnDocument* document,
                                       const Listener& listener, DrawingAnswer* answer) {
    if (!sendQuestion(socket_.get(), question, document != nullptr ? document->descriptor() : -1) ||
        (document != nullptr && !sendAll(socket_.get(), document->password().data(), question.passwordSize))) {
        return Wait::ended;
    }
    const Wait waited = wait(listener);
    if (waited != Wait::answered) {
        return waited;
    }
    return receiveAll(socket_.get(), answer, sizeof *answer) ? Wait::answered : Wait::ended;
}

DrawingClient::Wait DrawingClient::wait(const Listener& listener) {
    bool isStopping = false;
    Clock::time_point end = Clock::now() + std::chrono::seconds(limits_.patience);
    for (;;) {
        std::array<pollfd, 2> both{{{socket_.get(), POLLIN, 0}, {listener.wake, POLLIN, 0}}};
        const int count = poll(both.data(), both.size(), millisecondsUntil(end));
        if (count == 0) {
            return isStopping ? Wait::stopped : Wait::late;
        }
        if (count < 0) {
            continue;  // a signal
        }
        if (both[0].revents != 0) {
            return Wait::answered;  // or at its end, which reading tells
        }
        eventfd_t ignored = 0;
        eventfd_read(listener.wake, &ignored);
        if (!isStopping && listener.isUnwanted()) {
            isStopping = true;
            end = std::min(end, Clock::now() + kPatienceWithStopping);
            if (!sendQuestion(socket_.get(), {Kind::stop})) {
                return Wait::ended;
            }
        }
    }
}
