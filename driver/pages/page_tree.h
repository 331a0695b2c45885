// The tree that a PDF keeps its pages in, walked without trust: it may be deep, go round, or lead to nothing.
//
// What of a tree are pages is decided here for who looks at a document and for who prints it, so that both count the
// same.
#pragma once

#include <qpdf/QPDF.hh>

#include <array>
#include <functional>
#include <vector>

/// What a page has from the nodes above it when it has none of its own.
inline constexpr std::array kInheritedKeys{"/MediaBox", "/CropBox", "/Rotate", "/Resources"};
/// Their values, in that order; null where no node has one.
using InheritedValues = std::array<QPDFObjectHandle, kInheritedKeys.size()>;

/// Hears of each entry that is no node: what is no dictionary is no page, either.
using TakePage = std::function<void(QPDFObjectHandle page, InheritedValues& inherited)>;

/// Walks along the entries of the tree in their order; memory and stack do not grow with its depth. Throws for a tree
/// that is too deep, and for one that has a node twice.
void walkPages(QPDF& pdf, const TakePage& take);

/// Makes these the document's pages: a tree of one level.
void replacePages(QPDF& pdf, const std::vector<QPDFObjectHandle>& pages);

/// Makes the tree one level deep, with all that a page needs in the page, so that libqpdf, which goes down a tree by
/// calling itself, may read it. Throws as walkPages does.
void flattenPages(QPDF& pdf);
