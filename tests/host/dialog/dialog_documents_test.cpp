// The dialog while its document is not there yet, as its user meets it.
#include "host/dialog/print_dialog.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "tests/host/settings/settings_session.h"
#include "tests/support/places.h"

#include <cstdlib>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace {

class DialogOfDocuments : public SettingsTest {
protected:
    struct Step {
        std::function<bool()> when;
        std::function<void()> then;
    };

    DialogOfDocuments() {
        fs::create_directories(folder / "server/filter");
        setenv("CUPS_SERVERBIN", (folder / "server").c_str(), 1);
    }
    ~DialogOfDocuments() override { unsetenv("CUPS_SERVERBIN"); }

    /// Opens the dialog on the document and takes the steps, each when the time for it has come.
    PrintDialog::Outcome run(const std::string& path, std::vector<Step> steps) {
        const DocumentPrograms programs{stagePath("lib/tavro-look"), stagePath("lib/tavro-convert")};
        auto first = std::make_unique<OpeningDocument>(path, programs);
        Document document = first->document();
        if (!first->isPrepared() && first->advance(std::chrono::seconds(5)) && !first->isLocked()) {
            document = *first->finish();
        }
        JobSetup job{document, printer, {}, {}, nullptr, {}, {JobWay::pdf, folder / "out.pdf"}};
        auto plugin = PluginHost::load(stagePath("plugins/TavroFeatures.plugin"));
        auto made = PrintDialog::make(bundle.get(), **plugin, std::move(*openDialogWindow(bundle.get())),
                                      {std::move(job),
                                       {PrinterChoice::Kind::ppd, sourcePath("resources/ppd/Tavro-ZR420.ppd")},
                                       stagePath("lib/tavro-pictures"),
                                       {{path}, std::move(first), programs},
                                       false});
        dialog = made->get();
        steps_ = std::move(steps);
        next_ = 0;
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            0, 0.01, [](EventLoopTimerRef, void* self) { static_cast<DialogOfDocuments*>(self)->step(); }, this,
            &timer);
        auto outcome = dialog->run([] {});
        RemoveEventLoopTimer(timer);
        EXPECT_EQ(next_, steps_.size());
        return outcome;
    }

    std::string textOf(HostControl number) const {
        CFStringRef text = nullptr;
        GetControlData(hostControl(dialog->window(), number), kControlEntireControl, kControlStaticTextCFStringTag,
                       sizeof text, &text, nullptr);
        return utf8Text(CFRef<CFStringRef>::adopt(text).get());
    }
    std::function<bool()> shows(HostControl number, const std::string& text) const {
        return [=, this] { return textOf(number) == text; };
    }
    static ControlRef inFront(HostControl number) { return hostControl(FrontNonFloatingWindow(), number); }
    static std::function<bool()> isInFront(HostControl number) {
        return [number] { return inFront(number) != nullptr; };
    }
    std::function<void()> click(HostControl number) const {
        return [number] { EXPECT_EQ(AutomationClick(inFront(number)), noErr); };
    }

    PrintDialog* dialog = nullptr;

private:
    void step() {
        if (next_ < steps_.size() && steps_[next_].when()) {
            steps_[next_++].then();
        }
    }

    std::vector<Step> steps_;
    std::size_t next_ = 0;
};

}  // namespace

TEST_F(DialogOfDocuments, WaitsForWhatFiltersMake) {
    const std::string filter = (folder.path() / "server/filter/texttopdf").string();
    const std::string go = folder / "go";
    std::ofstream(filter) << "#!/bin/sh\nuntil [ -e '" << go << "' ]; do sleep 0.05; done\ncat '"
                          << sourcePath("tests/data/ten-pages.pdf") << "'\n";
    fs::permissions(filter, fs::perms::owner_all);
    std::ofstream(folder / "notes.txt") << "one\n";
    const std::string preparing = "Preparing \u201Cnotes.txt\u201D\u2026";
    const auto outcome = run(folder / "notes.txt", {{shows(kDocumentPages, preparing), [] {}},
                                                    {shows(kPreviewStack, preparing), click(kPrint)},
                                                    {isInFront(kJobProgressCancel), click(kJobProgressCancel)},
                                                    {isInFront(kPrint), [&] { std::ofstream(go) << "go"; }},
                                                    {shows(kDocumentPages, "10 pages"), [] {}},
                                                    {shows(kPreviewStack, "10 pages on 10 sheets"), click(kPrint)}});
    EXPECT_EQ(outcome.status, ExitStatus::success) << outcome.line;
    EXPECT_TRUE(fs::exists(folder / "out.pdf"));
}

TEST_F(DialogOfDocuments, AsksForAPassword) {
    const std::string locked = folder / "locked.pdf";
    ASSERT_EQ(std::system(("qpdf --encrypt s3cret owner 256 -- '" + sourcePath("tests/data/ten-pages.pdf") + "' '" +
                           locked + "'")
                              .c_str()),
              0);
    const auto type = [this](const char* password) {
        return [this, password] {
            EXPECT_EQ(AutomationType(inFront(kDocumentPassword), makeString(password).get()), noErr);
            click(kDocumentPasswordOK)();
        };
    };
    const auto given = run(locked, {{isInFront(kDocumentPassword), type("wrong")},
                                    {isInFront(kDocumentPassword), type("s3cret")},
                                    {shows(kDocumentPages, "10 pages"), click(kPrint)}});
    EXPECT_EQ(given.status, ExitStatus::success) << given.line;
    EXPECT_TRUE(fs::exists(folder / "out.pdf"));
    const auto cancelled = run(locked, {{isInFront(kDocumentPassword), click(kDocumentPasswordCancel)}});
    EXPECT_EQ(cancelled.status, ExitStatus::cancelled);
    const auto wrong = run(locked, {{isInFront(kDocumentPassword), type("a")},
                                    {isInFront(kDocumentPassword), type("b")},
                                    {isInFront(kDocumentPassword), type("c")}});
    EXPECT_EQ(wrong.status, ExitStatus::unusableInput);
}

TEST_F(DialogOfDocuments, TellsOfAFileThatHasChanged) {
    const std::string path = folder / "mine.pdf";
    fs::copy_file(sourcePath("tests/data/ten-pages.pdf"), path);
    const auto change = [&] {
        std::ofstream(path, std::ios::trunc) << "other";
        dialog->settle();
    };
    const auto outcome =
        run(path, {{shows(kDocumentPages, "10 pages"), change},
                   {shows(kDocumentPages, "The file has changed; this is printed as shown"), click(kPrint)}});
    EXPECT_EQ(outcome.status, ExitStatus::success) << outcome.line;
    EXPECT_EQ(std::system(("test $(qpdf --show-npages '" + (folder / "out.pdf") + "') = 10").c_str()), 0);
}

// The maker's panels have pages of their own.
TEST_F(DialogOfDocuments, HasHelpWithoutTheMakersPanels) {
    std::string ppd;
    std::ifstream in(sourcePath("resources/ppd/Tavro-ZR420.ppd"));
    for (std::string line; std::getline(in, line);) {
        ppd += (line.starts_with("*Manufacturer") ? "*Manufacturer: \"Other\"" : line) + "\n";
    }
    std::ofstream(folder / "other.ppd") << ppd;
    printer = *openPPD(folder / "other.ppd");
    OSStatus answered = eventNotHandledErr;
    const auto askForHelp = [&] {
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, 0, 0, &event);
        const HICommand help{0, FourCharCode("Thlp"), nullptr, 0, nullptr};
        SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof help, &help);
        answered = SendEventToEventTarget(event, GetWindowEventTarget(dialog->window()));
        ReleaseEvent(event);
        dialog->end({ExitStatus::cancelled, {}});
    };
    run(sourcePath("tests/data/ten-pages.pdf"), {{shows(kDocumentPages, "10 pages"), askForHelp}});
    EXPECT_EQ(answered, noErr);
}
