#include "driver/proof/device_events.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <system_error>

namespace {

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// Takes the words of a line apart, from its end on as many as there are places for.
bool readNumbers(std::string_view line, std::span<double*> numbers) {
    for (double* const number : numbers) {
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), *number);
        if (error != std::errc()) {
            return false;
        }
        line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    }
    return true;
}

void trim(std::string* text) {
    while (!text->empty() && text->back() == ' ') {
        text->pop_back();
    }
}

/// The entries of a dictionary end with tabs, and come as the interpreter keeps them: in the order of their names then.
std::string inOrder(std::string_view value) {
    std::vector<std::string_view> entries;
    for (std::size_t end = value.find('\t'); end != std::string_view::npos; end = value.find('\t')) {
        entries.push_back(value.substr(0, end));
        value.remove_prefix(end + 1);
    }
    std::ranges::sort(entries);
    std::string text;
    for (const std::string_view entry : entries) {
        text.append(entry).append(" ");
    }
    return text.append(value);
}

constexpr std::string_view kSet = "%TavroSet ";
constexpr std::string_view kPage = "%TavroPage";
constexpr std::string_view kError = "Error: /";
constexpr std::string_view kBox = "%%HiResBoundingBox: ";

/// The same for one that says fewer.
Tones tonesIn(std::string_view numbers) {
    std::array<double, kUsualTones.size() * kToneSteps.size()> values{};
    std::array<double*, values.size()> places;
    std::ranges::transform(values, places.begin(), [](double& value) { return &value; });
    Tones tones = kUsualTones;
    if (readNumbers(numbers, places)) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            // What is no number of per cent fails the comparison.
            tones[i / kToneSteps.size()][i % kToneSteps.size()] =
                values[i] >= 0 ? static_cast<int>(std::min(values[i], 100.0)) : 0;
        }
    }
    return tones;
}

std::vector<DeviceEvent> eventsIn(std::string_view output) {
    std::vector<DeviceEvent> events;
    for (const std::string_view line : linesOf(output)) {
        if (line.starts_with(kSet)) {
            const std::string_view wish = line.substr(kSet.size());
            const std::size_t blank = std::min(wish.find(' '), wish.size());
            DeviceEvent event{DeviceEvent::Kind::set,
                              std::string(wish.substr(0, blank)),
                              inOrder(wish.substr(std::min(blank + 1, wish.size()))),
                              0,
                              0,
                              0,
                              0,
                              {},
                              kUsualTones};
            trim(&event.value);
            events.push_back(std::move(event));
        } else if (line.starts_with(kPage)) {
            events.push_back({DeviceEvent::Kind::page, {}, {}, 0, 0, 0, 0, {}, tonesIn(line.substr(kPage.size()))});
        } else if (line.starts_with(kBox) && !events.empty()) {
            DeviceEvent& page = events.back();
            double* numbers[] = {&page.left, &page.bottom, &page.right, &page.top};
            readNumbers(line.substr(kBox.size()), numbers);
        } else if (line.starts_with(kError)) {
            events.push_back({DeviceEvent::Kind::error, {}, std::string(line), 0, 0, 0, 0, {}, kUsualTones});
        }
    }
    return events;
}

/// The text of each page: what stands before the mark of its end, in one line.
void addTexts(std::string_view output, std::vector<DeviceEvent>* events) {
    std::vector<std::string> texts(1);
    for (std::string_view line : linesOf(output)) {
        if (line.starts_with(kPage)) {
            texts.emplace_back();
        } else if (line.starts_with(kError)) {
            break;  // what follows is the interpreter's
        } else if (!line.starts_with("%Tavro")) {
            std::string& text = texts.back();
            for (const char c : line) {
                const bool isBlank = static_cast<unsigned char>(c) <= ' ';
                if (!isBlank) {
                    text += c;
                } else if (!text.empty() && text.back() != ' ') {
                    text += ' ';
                }
            }
            if (!text.empty() && text.back() != ' ') {
                text += ' ';
            }
        }
    }
    // The device writes a page's text when it is shown, behind the mark.
    std::size_t page = 0;
    for (DeviceEvent& event : *events) {
        if (event.kind == DeviceEvent::Kind::page && ++page < texts.size()) {
            trim(&texts[page]);
            event.text = texts[page];
        }
    }
}

}  // namespace

std::vector<DeviceEvent> readDeviceEvents(std::string_view drawn, std::string_view read) {
    std::vector<DeviceEvent> events = eventsIn(drawn);
    addTexts(read, &events);
    return events;
}
