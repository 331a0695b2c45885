#include "platform/printing/server_connection.h"

#include <array>

ServerConnection::ServerConnection(int timeoutMilliseconds) {
    // The library would ask for a password on the terminal; a server that wants one refuses the request instead.
    cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                       nullptr);
    http_ =
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, timeoutMilliseconds, nullptr);
    extend(timeoutMilliseconds);
    if (http_ != nullptr) {
        constexpr double kSecondsBetweenLooks = 0.1;
        httpSetTimeout(
            http_, kSecondsBetweenLooks,
            [](http_t*, void* deadline) { return Clock::now() < *static_cast<Clock::time_point*>(deadline) ? 1 : 0; },
            &deadline_);
    }
}

IPPMessage ServerConnection::ask(ipp_op_t operation, const char* printerAddress,
                                 std::initializer_list<const char*> attributes) {
    ipp_t* const request = ippNewRequest(operation);
    if (printerAddress != nullptr) {
        ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, printerAddress);
    }
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    ippAddStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                  static_cast<int>(attributes.size()), nullptr, std::data(attributes));
    return IPPMessage(cupsDoRequest(http_, request, "/"));
}

std::string ServerConnection::name() {
    constexpr int kUsualPort = 631;
    const std::string host = std::string("the print server ") + cupsServer();
    return cupsServer()[0] == '/' || ippPort() == kUsualPort ? host : host + ":" + std::to_string(ippPort());
}

std::string queueAddress(const std::string& queue) {
    std::array<char, HTTP_MAX_URI> address{};
    httpAssembleURIf(HTTP_URI_CODING_ALL, address.data(), address.size(), "ipp", nullptr, "localhost", ippPort(),
                     "/printers/%s", queue.c_str());
    return address.data();
}
