// Lists of special pages: how adding grows with the number of pages, what a record costs on its way to the ticket and
// back, and how much memory a page takes.

#include "bench/side_by_side.h"
#include "model/records/special_page_list.h"

#include <malloc.h>

#include <random>

namespace {

template <typename Page>
SpecialPages randomPages(std::size_t count) {
    std::mt19937 random(1);
    SpecialPages pages;
    for (std::size_t i = 0; i < count; ++i) {
        auto page = std::make_unique<Page>();
        page->setStartPage(SInt32(random() % (4 * count)));
        if constexpr (std::is_same_v<Page, ExceptionPage>) {
            page->setEndPage(page->startPage() + SInt32(random() % 8));
        }
        pages.push_back(std::move(page));
    }
    return pages;
}

/// Adds n pages at once to a list that has n already.
template <typename List, typename Page>
void measureGrowth(const char* name, std::size_t n) {
    const SpecialPages present = randomPages<Page>(n);
    SpecialPages added = randomPages<Page>(2 * n);
    added.resize(n);
    std::vector<double> times;
    CFIndex count = 0;
    for (int round = 0; round < 5; ++round) {
        List list;
        list.add(present);
        times.push_back(bench::microseconds([&] { list.add(added); }));
        count = list.count();
    }
    std::printf("%-12s %7zu into %7zu -> %7lld %9.1f ms   %.3f us a page\n", name, n, n, static_cast<long long>(count),
                bench::medianOf(times) / 1000, bench::medianOf(times) / double(2 * n));
}

/// A list of n pages to a ticket's array and back.
template <typename List, typename Page>
void measureTicket(const char* name, std::size_t n) {
    List list;
    for (std::size_t i = 0; i < n; ++i) {
        auto page = std::make_unique<Page>();
        page->setStartPage(SInt32(20 * i));
        page->stock().setType(kStockTypeCardStock);
        if constexpr (std::is_same_v<Page, ExceptionPage>) {
            page->setEndPage(SInt32(20 * i + 9));
        }
        SpecialPages one;
        one.push_back(std::move(page));
        list.add(one);
    }
    std::vector<double> writing;
    std::vector<double> reading;
    for (int round = 0; round < 51; ++round) {
        CFRef<CFMutableArrayRef> ticket;
        writing.push_back(bench::microseconds([&] { ticket = list.asTicket(); }));
        List back;
        reading.push_back(bench::microseconds([&] { back.setFromTicket(ticket.get()); }));
    }
    std::printf("%-12s %7zu to the ticket %.2f us a record, back %.2f us a record\n", name, n,
                bench::medianOf(writing) / double(n), bench::medianOf(reading) / double(n));
}

}  // namespace

int main() {
    for (const std::size_t n : {25000, 50000, 100000}) {
        measureGrowth<InsertList, Insert>("inserts", n);
    }
    for (const std::size_t n : {25000, 50000, 100000}) {
        measureGrowth<ExceptionPageList, ExceptionPage>("exceptions", n);
    }
    measureTicket<InsertList, Insert>("inserts", 1000);
    measureTicket<ExceptionPageList, ExceptionPage>("exceptions", 1000);

    constexpr std::size_t kMany = 1'000'000;
    const std::size_t before = mallinfo2().hblkhd + mallinfo2().uordblks;
    const SpecialPages pages = randomPages<Insert>(kMany);
    std::printf("a page of an open range, as an insert: %.1f bytes\n",
                double(mallinfo2().hblkhd + mallinfo2().uordblks - before) / double(kMany));
}
