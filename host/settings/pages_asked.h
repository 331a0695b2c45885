// Which pages the user wants of a document that its program makes only afterwards.
#pragma once

enum class PagesAsked { all, range, current, selected };

/// What that program knows of its pages, and proposes.
struct PagesOffered {
    bool hasCurrent = false;
    bool hasSelected = false;
    PagesAsked proposed = PagesAsked::all;
};
