// What the program that draws pages is asked, and what it answers, over a socket of its own.
//
// Each question is a DrawingQuestion, followed by a password when it opens a document; the document itself comes along
// as a descriptor. Each but `stop` has one DrawingAnswer, followed by the picture's values if there is one. A question
// that comes while a page is drawn ends that drawing; only `stop` does so without another question.
#pragma once

#include "platform/drawing/DocumentPictures.h"
#include "platform/files/descriptor.h"

#include <cstddef>
#include <cstdint>

struct DrawingQuestion {
    enum class Kind : std::uint32_t { open, close, draw, stop } kind = Kind::stop;
    std::uint32_t document = 0;  // a number that whoever asks gives it
    PageView view;               // to draw
    std::uint32_t passwordSize = 0;
};

struct DrawingAnswer {
    enum class Result : std::uint32_t { opened, drawn, stopped, notDrawn, damaged, needsPassword, noMemory } result;
    std::uint32_t byteCount = 0;  // of the picture that follows
};

inline constexpr std::uint32_t kLongestPassword = 4096;

// False, with errno, when the other one has ended or says nonsense; nobody is sent a signal.

bool sendAll(int socket, const void* bytes, std::size_t size);
bool receiveAll(int socket, void* bytes, std::size_t size);
/// With a descriptor, unless it is negative.
bool sendQuestion(int socket, const DrawingQuestion& question, int document = -1);
/// The descriptor that came along, if one did.
bool receiveQuestion(int socket, DrawingQuestion* question, Descriptor* document);
