#include "driver/worker/drawing_messages.h"

#include <sys/socket.h>
#include <array>
#include <cerrno>
#include <cstring>

namespace {

/// Room for one descriptor, aligned as the system wants it.
struct alignas(cmsghdr) DescriptorRoom {
    std::array<char, CMSG_SPACE(sizeof(int))> bytes{};
};

msghdr messageOf(iovec* content, DescriptorRoom* room) {
    msghdr message{};
    message.msg_iov = content;
    message.msg_iovlen = 1;
    if (room != nullptr) {
        message.msg_control = room->bytes.data();
        message.msg_controllen = room->bytes.size();
    }
    return message;
}

}  // namespace

bool sendAll(int socket, const void* bytes, std::size_t size) {
    const auto* rest = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t sent = send(socket, rest, size, MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR) {
            return false;
        }
        rest += sent > 0 ? sent : 0;
        size -= sent > 0 ? static_cast<std::size_t>(sent) : 0;
    }
    return true;
}

bool receiveAll(int socket, void* bytes, std::size_t size) {
    auto* rest = static_cast<char*>(bytes);
    while (size > 0) {
        const ssize_t received = recv(socket, rest, size, 0);
        if (received == 0 || (received < 0 && errno != EINTR)) {
            return false;
        }
        rest += received > 0 ? received : 0;
        size -= received > 0 ? static_cast<std::size_t>(received) : 0;
    }
    return true;
}

bool sendQuestion(int socket, const DrawingQuestion& question, int document) {
    if (document < 0) {
        return sendAll(socket, &question, sizeof question);
    }
    DrawingQuestion copy = question;
    iovec content{&copy, sizeof copy};
    DescriptorRoom room;
    const msghdr message = messageOf(&content, &room);
    cmsghdr* const part = CMSG_FIRSTHDR(&message);
    part->cmsg_level = SOL_SOCKET;
    part->cmsg_type = SCM_RIGHTS;
    part->cmsg_len = CMSG_LEN(sizeof document);
    std::memcpy(CMSG_DATA(part), &document, sizeof document);
    // So few bytes go at once, when nothing waits before them.
    return sendmsg(socket, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof copy);
}

bool receiveQuestion(int socket, DrawingQuestion* question, Descriptor* document) {
    iovec content{question, sizeof *question};
    DescriptorRoom room;
    msghdr message = messageOf(&content, &room);
    ssize_t received = 0;
    do {
        received = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    } while (received < 0 && errno == EINTR);
    if (received <= 0) {
        return false;
    }
    if (const cmsghdr* const part = CMSG_FIRSTHDR(&message);
        part != nullptr && part->cmsg_level == SOL_SOCKET && part->cmsg_type == SCM_RIGHTS) {
        int number = -1;
        std::memcpy(&number, CMSG_DATA(part), sizeof number);
        *document = Descriptor(number);
    }
    const auto size = static_cast<std::size_t>(received);
    return receiveAll(socket, reinterpret_cast<char*>(question) + size, sizeof *question - size);
}
