// What stocks and fax recipients cost on their way to the ticket and back, a thousand of each.

#include "bench/side_by_side.h"
#include "jobtypes/records/fax_recipient_list.h"
#include "model/stock/stock.h"
#include "platform/foundation/text.h"

#include <string>

namespace {

constexpr int kRecords = 1000;
constexpr int kRounds = 51;

void report(const char* name, std::vector<double> writing, std::vector<double> reading) {
    std::printf("%-12s %7d to the ticket %.2f us a record, back %.2f us a record\n", name, kRecords,
                bench::medianOf(std::move(writing)) / kRecords, bench::medianOf(std::move(reading)) / kRecords);
}

void measureStocks() {
    std::vector<double> writing;
    std::vector<double> reading;
    const std::vector<Stock> stocks(kRecords);
    for (int round = 0; round < kRounds; ++round) {
        std::vector<CFRef<CFMutableDictionaryRef>> tickets;
        tickets.reserve(stocks.size());
        writing.push_back(bench::microseconds([&] {
            for (const Stock& stock : stocks) {
                tickets.push_back(stock.asTicket());
            }
        }));
        std::vector<Stock> back;
        back.reserve(stocks.size());
        reading.push_back(bench::microseconds([&] {
            for (const auto& ticket : tickets) {
                back.emplace_back(ticket.get());
            }
        }));
    }
    report("stocks", std::move(writing), std::move(reading));
}

CFRef<CFStringRef> makeText(const char* name, int number) {
    return makeString(name + std::to_string(number));
}

void measureRecipients() {
    FaxRecipientList list;
    for (int i = 0; i < kRecords; ++i) {
        const auto recipient = FaxRecipientOwner(
            new FaxRecipient(makeText("First", i).get(), makeText("Last", i).get(), makeText("+49 30 ", i).get()));
        recipient->setOrganization(makeText("Organization ", i).get());
        recipient->setEmailAddress(makeText("someone@example.org ", i).get());
        list.append(recipient.get());
    }
    std::vector<double> writing;
    std::vector<double> reading;
    for (int round = 0; round < kRounds; ++round) {
        CFRef<CFArrayRef> ticket;
        writing.push_back(bench::microseconds([&] { ticket = list.toTicket(); }));
        FaxRecipientList back;
        reading.push_back(bench::microseconds([&] { back.fromTicket(ticket.get()); }));
    }
    report("recipients", std::move(writing), std::move(reading));
}

}  // namespace

int main() {
    measureStocks();
    measureRecipients();
}
