// Pages of a PDF in the terms of libqpdf.
#pragma once

#include "driver/pages/document.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include <functional>
#include <memory>
#include <string>

/// What is shown of a page.
struct PageBox {
    QPDFObjectHandle::Rectangle box;  // in the page's own units
    double unit = 1;                  // points in one of them
    int turns = 0;                    // quarters to the right that it is turned for showing

    [[nodiscard]] Size size() const;  // as it is shown
    /// From the page's own units to the page as it is shown, whose origin is its lower left corner.
    [[nodiscard]] Matrix toShown() const;
};

PageBox boxOf(QPDFPageObjectHelper page);

/// Opens a document that may be printed; `read` gives it its bytes. Nothing, with the reason, for any other.
std::shared_ptr<QPDF> openPDF(const std::function<void(QPDF&)>& read, std::string* reason);

/// What went wrong, in the words of a line.
std::string reasonOf(const std::exception& error);
