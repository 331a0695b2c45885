// Paper: one choice of size, colour and type, and what a production printer wants to know of special media.
//
// The same record describes the job's paper and that of each special page. A number that is kTicketValueUnset is not
// set: it stays out of the ticket, and the job's or the printer's own setting holds.
#pragma once

#include "model/settings/job_context.h"
#include "model/settings/ticket_access.h"
#include "platform/foundation/CFRef.h"

#include <string>

/// The size, beside those of the option map of "PageSize", that width and length give.
inline constexpr SInt32 kStockSizeCustom = 75;
/// The colour, beside those of the option map of "MediaColor", that has a name instead.
inline constexpr SInt32 kStockColorCustom = 10;
inline constexpr SInt32 kStockColorWhite = 1;
inline constexpr SInt32 kStockColorClear = 6;
inline constexpr SInt32 kStockColorOther = 14;
inline constexpr SInt32 kStockPunched = 2;
inline constexpr SInt32 kStockUncoated = 1;  // of the sides that are coated

/// Types of paper that mean more than a name. 4 to 7 are this program's own; the others stand in the option map of
/// "MediaType".
enum StockType : SInt32 {
    kStockTypeStandard = 1,
    kStockTypeTransparency = 2,
    kStockTypePrePrinted = 3,
    kStockTypePrecutTab = 4,  // has a modulus
    kStockTypeFullCutTab = 5,
    kStockTypeOrdered = 6,  // named by customType, has a modulus
    kStockTypeCustom = 7,   // named by customType
    kStockTypeEnvelopes = 8,
    kStockTypeLabels = 9,
    kStockTypeRecycled = 10,
    kStockTypePunched = 11,
    kStockTypeCardStock = 12,
    kStockTypeLetterhead = 14,
    kStockTypeCustom1 = 15,
    kStockTypeCustom2 = 16,
    kStockTypeCustom3 = 17,
    kStockTypeCustom4 = 18,
    kStockTypeCustom5 = 19,
    kStockTypeCustom6 = 20,
    kStockTypeCustom7 = 21,
    kStockTypeOther = 22,
    kStockTypeSystemDefault = 23,
    kStockTypeTabStock = 24,
    kStockTypeHeavyweightLabels = 25,
    kStockTypeCardStock2 = 26,  // a 2 at the end: printed on its second side
    kStockTypeExtraHeavyweight = 27,
    kStockTypeExtraHeavyweight2 = 28,
    kStockTypeLightGlossy = 29,
    kStockTypeLightGlossy2 = 30,
    kStockTypeHeavyGlossy = 31,
    kStockTypeHeavyGlossy2 = 32,
    kStockTypeHeavyTabStock = 33,
    kStockTypeExtraHeavyPlus = 35,
    kStockTypeExtraHeavyPlus2 = 36,
    kStockTypeExtraHeavyGlossy = 37,
    kStockTypeExtraHeavyGlossy2 = 38,
    kStockTypeExtraHeavyLabels = 39,
};

class Stock {
public:
    /// Size 1, colour 1 and everything else not set.
    Stock();
    /// Reads a ticket's dictionary, which may be null: "Size" (with "Width" and "Length" when it is custom), "Type",
    /// "Modulus" (for pre-cut tabs and ordered stock) and "Color". All else is not set; what else the dictionary holds
    /// is for the driver alone.
    explicit Stock(CFDictionaryRef ticket);
    Stock(const Stock& other) = default;
    /// Copies through the setters: a transparency becomes clear.
    Stock& operator=(const Stock& other);
    virtual ~Stock() = default;

    /// Equal in every number and, without regard to case, in every text. A stock that was given a null text equals
    /// none, not even itself.
    bool operator==(const Stock& other) const;

    /// A new dictionary of all that is set.
    [[nodiscard]] CFRef<CFMutableDictionaryRef> asTicket() const;

    SInt32 size() const { return size_; }
    /// In hundredths of a millimetre, of custom sizes; the length is along the feed.
    SInt32 width() const { return width_; }
    SInt32 length() const { return length_; }
    SInt32 type() const { return type_; }
    SInt32 color() const { return color_; }
    /// Tabs in a bank.
    SInt32 modulus() const { return modulus_; }
    SInt32 punched() const { return punched_; }
    SInt32 weight() const { return weight_; }
    SInt32 sidesCoated() const { return sidesCoated_; }
    SInt32 coatingType() const { return coatingType_; }
    SInt32 finish() const { return finish_; }
    SInt32 grain() const { return grain_; }
    /// The stock is known by its customName alone.
    bool customNameOnly() const { return customNameOnly_; }
    // Texts are lent.
    CFStringRef customType() const { return customType_.get(); }
    CFStringRef customColor() const { return customColor_.get(); }
    CFStringRef description() const { return description_.get(); }
    CFStringRef customName() const { return customName_.get(); }
    CFStringRef comment() const { return comment_.get(); }

    /// Any size but kStockSizeCustom forgets width and length.
    void setSize(SInt32 size);
    /// A width or length that is set makes the size custom.
    void setWidth(SInt32 width);
    void setLength(SInt32 length);
    /// kStockTypeTransparency also makes the colour clear.
    void setType(SInt32 type);
    void setColor(SInt32 color) { color_ = color; }
    void setModulus(SInt32 modulus) { modulus_ = modulus; }
    void setPunched(SInt32 punched) { punched_ = punched; }
    void setWeight(SInt32 weight) { weight_ = weight; }
    void setSidesCoated(SInt32 sidesCoated) { sidesCoated_ = sidesCoated; }
    void setCoatingType(SInt32 coatingType) { coatingType_ = coatingType; }
    void setFinish(SInt32 finish) { finish_ = finish; }
    void setGrain(SInt32 grain) { grain_ = grain; }
    void setCustomNameOnly(bool customNameOnly) { customNameOnly_ = customNameOnly; }
    // The stock shares the text that it is given.
    void setCustomType(CFStringRef customType) { customType_ = CFRef<CFStringRef>::retain(customType); }
    void setCustomColor(CFStringRef customColor) { customColor_ = CFRef<CFStringRef>::retain(customColor); }
    void setDescription(CFStringRef description) { description_ = CFRef<CFStringRef>::retain(description); }
    void setCustomName(CFStringRef customName) { customName_ = CFRef<CFStringRef>::retain(customName); }
    void setComment(CFStringRef comment) { comment_ = CFRef<CFStringRef>::retain(comment); }

private:
    SInt32 size_ = kTicketValueUnset;
    SInt32 width_ = kTicketValueUnset;
    SInt32 length_ = kTicketValueUnset;
    SInt32 type_ = kTicketValueUnset;
    CFRef<CFStringRef> customType_;
    SInt32 color_ = kTicketValueUnset;
    CFRef<CFStringRef> customColor_;
    SInt32 modulus_ = kTicketValueUnset;
    SInt32 punched_ = kTicketValueUnset;
    SInt32 weight_ = kTicketValueUnset;
    CFRef<CFStringRef> description_;
    SInt32 sidesCoated_ = kTicketValueUnset;
    SInt32 coatingType_ = 1;
    SInt32 finish_ = kTicketValueUnset;
    SInt32 grain_ = kTicketValueUnset;
    CFRef<CFStringRef> customName_;
    bool customNameOnly_ = false;
    CFRef<CFStringRef> comment_;
};

/// The stock with all that a ticket's dictionary says, as Stock::asTicket writes it.
[[nodiscard]] Stock StockWithDetails(CFDictionaryRef ticket);

/// The stock that panels work on: with its details on a printer whose panels show them (model/settings/plugin_state.h),
/// else what the constructor reads.
[[nodiscard]] Stock StockOfTicket(CFDictionaryRef ticket);

// The color and the type of the option map that stand for the stock's own: Other for one that has a name, tab stock for
// tabs that the map has no row for.
SInt32 StockColorOfMap(const Stock& stock);
SInt32 StockTypeOfMap(const Stock& stock);

/// The option of PageSize for a size of the user's own, in points to the hundredth: "Custom.283.46x566.93". Empty
/// without a width and a length.
[[nodiscard]] std::string CustomSizeOption(const Stock& stock);

/// Makes the stock the default of a job or cover (size, colour and type 1) or of an insert or exception (the job's
/// paper). Coating, finish, grain and comment stay as they are.
void DefaultStock(Stock* stock, JobContext context);
