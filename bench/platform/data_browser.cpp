// A data browser beside a plain QTreeWidget of the same rows: fill, sort by a column, scroll a page, select all, add a
// row.
//
// usage: bench_data_browser

#include "bench/side_by_side.h"
#include "platform/foundation/CFRef.h"
#include "platform/foundation/CFString.h"
#include "platform/toolbox/Automation.h"
#include "platform/toolbox/DataBrowser.h"
#include "platform/toolbox/data_browser_view.h"
#include "platform/toolbox/objects.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTreeWidget>
#include <array>
#include <string>
#include <vector>

namespace {

constexpr std::array<DataBrowserPropertyID, 3> kColumns = {FourCharCode("NAME"), FourCharCode("FAX "),
                                                           FourCharCode("EMAL")};

struct Person {
    std::array<CFRef<CFStringRef>, kColumns.size()> fields;
};

std::size_t fieldOf(DataBrowserPropertyID property) {
    return static_cast<std::size_t>(std::ranges::find(kColumns, property) - kColumns.begin());
}

OSStatus giveText(ControlRef, DataBrowserItemID item, DataBrowserPropertyID property, DataBrowserItemDataRef data,
                  Boolean) {
    return SetDataBrowserItemDataText(data, reinterpret_cast<const Person*>(item)->fields[fieldOf(property)].get());
}

Boolean comesBefore(ControlRef, DataBrowserItemID one, DataBrowserItemID two, DataBrowserPropertyID property) {
    const auto text = [property](DataBrowserItemID item) {
        return reinterpret_cast<const Person*>(item)->fields[fieldOf(property)].get();
    };
    return CFStringCompare(text(one), text(two), 0) == kCFCompareLessThan;
}

int changes = 0;
void count(ControlRef, DataBrowserItemID, DataBrowserItemNotification) {
    ++changes;
}

/// Layout and paint what is pending, as the event loop does.
void paint(QTreeView& view) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    view.viewport()->repaint();
}

void pageDown(QTreeView& view) {
    QScrollBar* bar = view.verticalScrollBar();
    bar->setValue(bar->value() + bar->pageStep() < bar->maximum() ? bar->value() + bar->pageStep() : 0);
    paint(view);
}

void run(int rows) {
    std::vector<Person> people(static_cast<std::size_t>(rows) + 1);
    for (std::size_t i = 0; i < people.size(); ++i) {
        const std::string number = std::to_string(i * 7919 % 100003);
        const std::array texts = {"Person " + number, "0" + number, number + "@example.org"};
        for (std::size_t field = 0; field < kColumns.size(); ++field) {
            people[i].fields[field] = CFRef<CFStringRef>::adopt(
                CFStringCreateWithCString(nullptr, texts[field].c_str(), kCFStringEncodingUTF8));
        }
    }
    std::vector<DataBrowserItemID> ids;
    for (int i = 0; i < rows; ++i) {
        ids.push_back(reinterpret_cast<DataBrowserItemID>(&people[static_cast<std::size_t>(i)]));
    }
    const auto additional = reinterpret_cast<DataBrowserItemID>(&people.back());

    DataBrowserView ours(nullptr);
    ours.setProperty("columns", "NAME FAX  EMAL");
    ours.setProperty("headers", QStringList{QStringLiteral("Name"), QStringLiteral("Fax"), QStringLiteral("E-mail")});
    ours.readColumns();
    auto* browser = new OpaqueControlRef(&ours, ControlKind::list);
    DataBrowserCallbacks callbacks{kDataBrowserLatestCallbacks, {}};
    callbacks.u.v1 = {giveText, comesBefore, count};
    SetDataBrowserCallbacks(browser, &callbacks);

    QTreeWidget peer;
    peer.setColumnCount(static_cast<int>(kColumns.size()));
    peer.setRootIsDecorated(false);
    peer.setUniformRowHeights(true);
    peer.setAlternatingRowColors(true);
    peer.setSelectionMode(QAbstractItemView::ExtendedSelection);
    peer.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    int peerChanges = 0;
    QObject::connect(&peer, &QTreeWidget::itemSelectionChanged, &peer, [&] { ++peerChanges; });
    for (QTreeView* view : {static_cast<QTreeView*>(&ours), static_cast<QTreeView*>(&peer)}) {
        view->resize(600, 400);
        view->show();
    }
    const auto newItem = [](const Person& person) {
        QStringList texts;
        for (const CFRef<CFStringRef>& field : person.fields) {
            texts += toQString(field.get());
        }
        return new QTreeWidgetItem(texts);
    };

    std::printf("%d rows\n", rows);
    const int rounds = rows > 5000 ? 15 : 51;
    bench::compare(
        "fill and show", rounds, "browser",
        [&] {
            RemoveDataBrowserItems(browser, kDataBrowserNoItem, 0, nullptr, 0);
            AddDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(ids.size()), ids.data(), 0);
            paint(ours);
        },
        "tree widget",
        [&] {
            peer.clear();
            QList<QTreeWidgetItem*> items;
            for (int i = 0; i < rows; ++i) {
                items += newItem(people[static_cast<std::size_t>(i)]);
            }
            peer.addTopLevelItems(items);
            paint(peer);
        });
    for (std::size_t column = 0; column < kColumns.size(); ++column) {
        bool upwards = false;
        bench::compare(("sort by column " + std::to_string(column + 1)).c_str(), rounds, "browser",
                       [&] {
                           upwards = !upwards;
                           SetDataBrowserSortProperty(browser, kColumns[column]);
                           SetDataBrowserSortOrder(browser,
                                                   upwards ? kDataBrowserOrderDecreasing : kDataBrowserOrderIncreasing);
                           paint(ours);
                       },
                       "tree widget",
                       [&] {
                           peer.sortItems(static_cast<int>(column), upwards ? Qt::DescendingOrder : Qt::AscendingOrder);
                           paint(peer);
                       });
    }
    bench::compare(
        "scroll a page", 201, "browser", [&] { pageDown(ours); }, "tree widget", [&] { pageDown(peer); });
    bench::compare(
        "select all", rounds, "browser",
        [&] {
            ours.clearSelection();
            ours.selectAll();
            paint(ours);
        },
        "tree widget",
        [&] {
            peer.clearSelection();
            peer.selectAll();
            paint(peer);
        });
    bench::compare(
        "sort with all selected", rounds, "browser",
        [&, upwards = false]() mutable {
            upwards = !upwards;
            SetDataBrowserSortOrder(browser, upwards ? kDataBrowserOrderDecreasing : kDataBrowserOrderIncreasing);
            paint(ours);
        },
        "tree widget",
        [&, upwards = false]() mutable {
            upwards = !upwards;
            peer.sortItems(2, upwards ? Qt::DescendingOrder : Qt::AscendingOrder);
            paint(peer);
        });
    ours.clearSelection();
    peer.clearSelection();
    std::vector<double> adding;
    std::vector<double> removing;
    std::vector<double> painting;
    for (int i = 0; i < 51; ++i) {
        adding.push_back(bench::microseconds([&] {
            AddDataBrowserItems(browser, kDataBrowserNoItem, 1, &additional, 0);
            ours.scrollToPoint(0, 0);  // lays the rows out
        }));
        painting.push_back(bench::microseconds([&] { paint(ours); }));
        removing.push_back(bench::microseconds([&] {
            RemoveDataBrowserItems(browser, kDataBrowserNoItem, 1, &additional, 0);
            ours.scrollToPoint(0, 0);
        }));
        paint(ours);
    }
    std::printf("%-34s browser %9.1f us   painted in %9.1f us   out again %9.1f us\n", "one row into its sorted place",
                bench::medianOf(adding), bench::medianOf(painting), bench::medianOf(removing));
    std::vector<DataBrowserItemID> everySecond;
    for (std::size_t i = 0; i < ids.size(); i += 2) {
        everySecond.push_back(ids[i]);
    }
    SetDataBrowserSortProperty(browser, kDataBrowserItemNoProperty);
    RemoveDataBrowserItems(browser, kDataBrowserNoItem, 0, nullptr, 0);
    AddDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(ids.size()), ids.data(), 0);
    paint(ours);
    std::printf("%-34s browser %9.1f us\n", "select every second row", bench::microseconds([&] {
                    SetDataBrowserSelectedItems(browser, static_cast<ItemCount>(everySecond.size()), everySecond.data(),
                                                kDataBrowserItemsAssign);
                    paint(ours);
                }));
    std::printf("%-34s browser %9.1f us\n", "remove every second row", bench::microseconds([&] {
                    RemoveDataBrowserItems(browser, kDataBrowserNoItem, static_cast<ItemCount>(everySecond.size()),
                                           everySecond.data(), 0);
                    paint(ours);
                }));
}

}  // namespace

int main(int argc, char** argv) {
    ToolboxInitialize(&argc, argv, true);
    run(1000);
    run(10000);
    return 0;
}
