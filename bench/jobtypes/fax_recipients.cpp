// The table of recipients in the fax setup's window, filled, sorted by each column and scrolled; and recipients added
// one by one, each looked for in the list first, as the address book's picker does.
//
// usage: bench_fax_recipients PLUGIN

#include "bench/side_by_side.h"
#include "jobtypes/dialogs/fax_list_editing.h"
#include "jobtypes/dialogs/fax_recipient_browser.h"
#include "jobtypes/dialogs/lan_fax_controls.h"
#include "platform/foundation/CFBundle.h"
#include "platform/foundation/CFURL.h"
#include "platform/foundation/text.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/Windows.h"
#include "platform/toolbox/data_browser_view.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <string>

namespace {

constexpr int kRounds = 31;

/// The padding makes every text that much longer.
std::vector<FaxRecipientOwner> makeRecipients(int count, std::size_t padding) {
    std::vector<FaxRecipientOwner> recipients;
    const std::string more(padding, 'x');
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i * 7919 % 100003) + more;
        recipients.emplace_back(new FaxRecipient(makeString("First " + number).get(), makeString("Last").get(),
                                                 makeString("0" + number).get()));
        recipients.back()->setEmailAddress(makeString(number + "@example.org").get());
        recipients.back()->setOrganization(makeString("Company " + number).get());
        recipients.back()->setPhoneNumber(makeString("00" + number).get());
        recipients.back()->setMailbox(makeString(number).get());
    }
    return recipients;
}

/// Lays out and paints what is pending, as the event loop does.
void paint(DataBrowserView& view) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    view.viewport()->repaint();
}

void report(const char* what, const std::vector<double>& times) {
    std::printf("  %-24s median %7.2f ms   longest %7.2f ms\n", what, bench::medianOf(times) / 1000,
                *std::ranges::max_element(times) / 1000);
}

template <typename Work>
void measure(const char* what, Work&& work) {
    std::vector<double> times;
    work();
    for (int round = 0; round < kRounds; ++round) {
        times.push_back(bench::microseconds(work));
    }
    report(what, times);
}

void measureTable(const FaxWindow& window, int count, std::size_t padding) {
    const ControlRef browser = window.control(kFaxBrowser);
    DataBrowserView& view = *DataBrowserView::of(browser);
    const std::vector<FaxRecipientOwner> recipients = makeRecipients(count, padding);
    std::vector<FaxRecipient*> rows;
    std::ranges::transform(recipients, std::back_inserter(rows), &FaxRecipientOwner::get);
    std::printf("%d recipients, texts of %zu characters\n", count, padding + 10);
    measure("fill", [&] {
        RemoveFaxRecipientRows(browser, rows);
        AddFaxRecipientRows(browser, rows);
        paint(view);
    });
    for (const OSType column : {FourCharCode("NAME"), FourCharCode("FAX "), FourCharCode("EMAL"), FourCharCode("ORG "),
                                FourCharCode("PHON"), FourCharCode("MBOX")}) {
        DataBrowserSortOrder order = kDataBrowserOrderIncreasing;
        SetDataBrowserSortProperty(browser, column);
        const std::string name{char(column >> 24), char(column >> 16), char(column >> 8), char(column)};
        measure(("sort by " + name).c_str(), [&] {
            order = order == kDataBrowserOrderIncreasing ? kDataBrowserOrderDecreasing : kDataBrowserOrderIncreasing;
            SetDataBrowserSortOrder(browser, order);
            paint(view);
        });
    }
    QScrollBar& bar = *view.verticalScrollBar();
    measure("scroll a page", [&] {
        bar.setValue(bar.value() + bar.pageStep() < bar.maximum() ? bar.value() + bar.pageStep() : 0);
        paint(view);
    });
    SetDataBrowserSortProperty(browser, kDataBrowserItemNoProperty);
    RemoveFaxRecipientRows(browser, rows);
}

void measureAdding(const FaxWindow& window, CFBundleRef bundle) {
    FaxListContext context;
    context.bundle = bundle;
    context.browser = window.control(kFaxBrowser);
    context.promptDuplicate = window.control(kFaxPromptDuplicate);
    context.promptRemove = window.control(kFaxPromptRemove);
    const FaxListScope scope(&context);
    window.setValue(kFaxPromptDuplicate, 1);
    std::printf("adding, each recipient looked for first\n");
    for (const int count : {250, 500, 1000}) {
        const std::vector<FaxRecipientOwner> recipients = makeRecipients(count, 0);
        std::vector<double> times;
        for (int round = 0; round < kRounds; ++round) {
            FaxRecipientList list;
            times.push_back(bench::microseconds([&] {
                for (const FaxRecipientOwner& recipient : recipients) {
                    AddRecipient(&list, recipient.get(), true);
                }
                paint(*DataBrowserView::of(context.browser));
            }));
            for (const FaxRecipientOwner& recipient : recipients) {
                TakeOutRecipient(&list, recipient.get());
            }
        }
        report(std::to_string(count).c_str(), times);
    }
}

}  // namespace

int main(int argc, char** argv) {
    ToolboxInitialize(&argc, argv, true);
    const auto url = CFRef<CFURLRef>::adopt(
        CFURLCreateWithFileSystemPath(nullptr, makeString(argc > 1 ? argv[1] : "").get(), kCFURLPOSIXPathStyle, true));
    const auto bundle = CFRef<CFBundleRef>::adopt(CFBundleCreate(nullptr, url.get()));
    FaxWindow window(bundle.get());
    if (window.load(CFSTR("Setup")) != noErr) {
        std::fprintf(stderr, "usage: bench_fax_recipients PLUGIN\n");
        return EXIT_FAILURE;
    }
    InstallFaxRecipientBrowser(window.control(kFaxBrowser));
    ShowWindow(window.get());
    measureTable(window, 1000, 0);
    measureTable(window, 1000, 10000);
    measureAdding(window, bundle.get());
}
