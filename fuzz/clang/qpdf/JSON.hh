// In place of libqpdf's own header of this name, which clang 14 to 16 take for an error in C++20: a vector of a class
// that is not complete yet. None of our sources has to do with that class.
#pragma once

class JSON;
