#include "host/dialog/start_marks.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

bool startIsMeasured() {
    static const bool measured = std::getenv("TAVRO_START_MARKS") != nullptr;
    return measured;
}

bool firstPictureIsMeasured() {
    const char* const wanted = std::getenv("TAVRO_START_MARKS");
    return wanted != nullptr && std::string_view(wanted) == "first-picture";
}

void markStart(const char* name) {
    if (startIsMeasured()) {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("%s %lld\n", name,
                    static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()));
    }
}
