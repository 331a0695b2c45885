// The field of a dialog into which a page list is typed.
#pragma once

#include "model/records/page_range.h"
#include "platform/toolbox/Controls.h"

#include <vector>

/// UTF-16 code units. A longer text is refused as a whole, with a notice: a field that takes part of a pasted list
/// would leave out pages that nobody sees.
inline constexpr SInt32 kLongestPageList = 30000;

/// Lets only what page lists are made of into the field, which says what is wrong with the list as it is typed. Word of
/// changes goes to its window (ui/text_input.h). The bundle is that of the notice's texts, lent as long as the field
/// lives.
void PreparePageField(ControlRef field, CFBundleRef bundle);

/// Shows the page list, which is in plain ASCII, with the user's digits.
void SetPageFieldText(ControlRef field, CFStringRef text);
[[nodiscard]] bool IsPageFieldEmpty(ControlRef field);

/// Ranges of the field's page list, in whatever digits; see CreatePageRangesBySeparatingString(), and
/// kPageRangeErrPageNumber when page 0 is among them.
[[nodiscard]] OSStatus GetPageFieldRanges(ControlRef field, std::vector<PageRange>* ranges);
/// The pages of the same list one by one, under the same conditions.
[[nodiscard]] OSStatus GetPageFieldPages(ControlRef field, std::vector<PageRange>* pages);
