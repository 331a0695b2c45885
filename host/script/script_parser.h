// The script language: one action a line.
//
// A line is words between blanks. A word, or a part of one, may stand in quotation marks, in which \" \\ \n and \t
// stand for themselves; '#' at the start of a word begins a comment. docs/script-language.md describes every action.
#pragma once

#include "platform/foundation/four_char_code.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace script {

/// A control: SIGNATURE:NUMBER, or @NAME in a window that is not the toolbox's own.
struct ControlName {
    OSType signature;
    SInt32 number;
    std::string name = {};  // empty for a control with a number

    bool operator==(const ControlName&) const = default;
};
std::string controlNameText(const ControlName& name);

struct Panel {
    std::string titleOrNumber;
};
struct Click {
    ControlName control;
};
struct Set {
    ControlName control;
    SInt32 value;
};
struct Choose {
    ControlName control;
    std::string text;
};
struct Item {
    ControlName control;
    OSType command;
    SInt32 reference;
};
struct Type {
    ControlName control;
    std::string text;
};
struct Rows {
    ControlName control;
    std::vector<UInt32> rows;  // from 1
};
struct Command {
    OSType code;
};
struct Answer {
    CFOptionFlags response;  // kCFUserNotification...Response
    bool all;                // of every later notice too
};
struct File {
    std::string path;  // a relative one counts from the script's folder
};
/// What is expected of a control; the number or the text where the aspect needs one.
enum class Aspect { value, text, enabled, disabled, hidden, visible, items, rows };
struct Expect {
    ControlName control;
    Aspect aspect;
    SInt32 number;
    std::string text;
};
struct ExpectWindow {
    std::string title;
};
struct ExpectConflicts {
    SInt32 number;
};
struct Controls {};
struct Shot {
    std::string name;  // a plain file name, without its ending
};
struct Ok {};
struct Cancel {};
/// An action of the program that runs the script, beside the language's own.
struct Own {
    std::string word;
    std::string argument;
};

using Action = std::variant<Panel, Click, Set, Choose, Item, Type, Rows, Command, Answer, File, Expect, ExpectWindow,
                            ExpectConflicts, Controls, Shot, Ok, Cancel, Own>;

struct Line {
    int number;  // in the file, from 1
    Action action;
};

/// A line that cannot be read. The reason never repeats a text of the script, which may be a password.
struct Error {
    int line;
    int column;  // in bytes, from 1
    std::string reason;
};

struct Script {
    std::vector<Line> lines;
    std::vector<Error> errors;
};

/// Reads a whole script; a script with errors is not to be run. `ownActions` are words, with one argument each, that
/// the program adds to the language.
Script parse(std::string_view text, std::span<const std::string_view> ownActions = {});

}  // namespace script
