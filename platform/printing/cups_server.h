// The queues of the CUPS server that the user's settings name.
//
// Every call may block, but never beyond its limit: what is asked is asked by a thread of its own, which is left alone
// when it takes too long, because the look-up of a server's name and the library's attempts to connect cannot be cut
// short. The time that the user takes to give a password does not count.
#pragma once

#include "platform/foundation/CFBase.h"
#include "platform/printing/ppd_cache.h"
#include "platform/printing/private_file.h"
#include "platform/printing/starting_options.h"

#include <chrono>
#include <future>
#include <memory>
#include <optional>

/// Beyond a connection's own limit, which is the one that is usually met.
inline constexpr std::chrono::milliseconds kServerGrace{300};

/// What a server said, or why it did not.
template <typename Value>
struct ServerAnswer {
    OSStatus status = noErr;
    std::string reason;  // without the queue's name
    Value value{};
};

/// The names of the server's queues, each followed by its instances ("queue/instance"); the user's default one first.
using QueueNames = ServerAnswer<std::vector<std::string>>;
/// Begins to ask for them. kPMServerNotResponding when the server is silent.
std::future<QueueNames> listQueues(int timeoutMilliseconds);

/// Begins to ask for a queue or an instance (the empty string: for the user's default one, and then for it), so that
/// the next findDefaultQueue and fetchQueue of that name find the answer on its way. The limit is the default queue's.
void askAhead(const std::string& destination, int timeoutMilliseconds);

/// The user's default queue or instance; the empty string when there is none. kPMServerNotResponding.
ServerAnswer<std::string> findDefaultQueue(int timeoutMilliseconds);

/// What a server, and the user's settings for it, know of a queue.
struct QueueDescription {
    std::shared_ptr<PrivateFile> ppd;     // a copy
    std::shared_ptr<const PPDFile> file;  // the copy, read
    StartingOptions start;                // the server's own defaults with the user's (lpoptions) on top
};

/// Fetches the description of a queue ("queue") or of an instance of one ("queue/instance"). kPMNoSuchPrinter,
/// kPMServerNotResponding or kPMUnusableDescription (a queue without PPD).
ServerAnswer<QueueDescription> fetchQueue(const std::string& destination);

/// How a queue is at the moment, as far as its next job is concerned.
struct QueueState {
    bool takesJobs = true;
    bool prints = true;              // else the jobs that it takes wait
    std::string message;             // the server's words for it; may be empty
    bool isOfSamePPD = true;         // as the copy
    bool hasSettingsFilter = false;  // settings_option.h
};

/// Looks at a queue. kPMNoSuchPrinter or kPMServerNotResponding.
ServerAnswer<QueueState> examineQueue(const std::string& queue, const std::shared_ptr<PrivateFile>& ppd);
