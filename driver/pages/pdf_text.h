// Numbers and operators of a PDF's content.
#pragma once

#include "driver/pages/sheet_geometry.h"

#include <array>
#include <charconv>
#include <string>
#include <string_view>

inline void append(std::string* content, double number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, 5);
    std::string_view text(digits.begin(), end.ec == std::errc() ? end.ptr : digits.begin());
    if (text.find('.') != std::string_view::npos) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        text = text.substr(0, text.find_last_not_of('.') + 1);
    }
    *content += text.empty() || text == "-0" ? "0" : text;
    *content += ' ';
}

/// Operands, and the operator behind them.
inline void append(std::string* content, std::initializer_list<double> numbers, std::string_view operation) {
    for (const double number : numbers) {
        append(content, number);
    }
    *content += operation;
    *content += '\n';
}

inline void append(std::string* content, const Matrix& matrix) {
    append(content, {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}, "cm");
}
