// Which way leads from a document of some kind to a PDF, or why none does.
#pragma once

#include "platform/files/file_kind.h"

#include <string>

struct ConversionPlan {
    enum class Way {
        none,
        copy,     // it is a PDF
        filters,  // of the print server
        office,   // an office program
    } way = Way::none;
    std::string type;    // for the filters
    std::string reason;  // why there is none: goes on from the document's name, without jargon
};

ConversionPlan planConversion(const FileKind& kind);

/// The path of the office program; empty when none is installed.
std::string officeProgram();
