#include "host/dialog/preview_column.h"

#include "host/preview/sheet_words.h"
#include "host/settings/texts.h"
#include "platform/foundation/text.h"

#include <poll.h>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int kUsualWidth = 436;  // of the column and the space beside it, in points

}  // namespace

PreviewColumn::PreviewColumn(WindowRef window, CFBundleRef texts, const Document& document, std::string drawer)
    : window_(window),
      texts_(texts),
      drawerPath_(std::move(drawer)),
      document_(document),
      hasDocument_(!document.path.empty()),
      job_(document, texts),
      width_(kUsualWidth) {
    static constexpr EventTypeSpec kOfSheet[] = {{kEventClassControl, kEventControlDraw},
                                                 {kEventClassMouse, kEventMouseWheelMoved},
                                                 {kEventClassKeyboard, kEventRawKeyDown}};
    static constexpr EventTypeSpec kOfNumber{kEventClassKeyboard, kEventRawKeyDown};
    InstallControlEventHandler(control(kPreviewSheet), handleSheet, std::size(kOfSheet), kOfSheet, this, nullptr);
    InstallControlEventHandler(control(kPreviewNumber), handleNumberKey, 1, &kOfNumber, this, nullptr);
}

PreviewColumn::~PreviewColumn() {
    RemoveEventLoopDescriptor(news_);
}

// ---- Room

void PreviewColumn::arrange(bool isWanted) {
    HISize least{};
    GetWindowResizeLimits(window_, &least);
    widthNeeded_ = least.width;
    isWanted_ = isWanted;
    SetControlVisibility(control(kPreviewPlace), isWanted && hasDocument_ && hasRoom(), true);
    SetControlVisibility(control(kShowPreview), hasDocument_, true);
    showBox();
}

bool PreviewColumn::isShown() const {
    return IsControlVisible(control(kPreviewPlace));
}

bool PreviewColumn::hasRoom() const {
    Rect room{};
    GetAvailableWindowPositioningBounds(window_, &room);
    return widthNeeded_ <= room.right - room.left;
}

/// A box that would show what has no room is gray.
void PreviewColumn::showBox() const {
    const ControlRef box = control(kShowPreview);
    const bool isUsable = isShown() || hasRoom();
    SetControl32BitValue(box, isShown() ? 1 : 0);
    if (isUsable != static_cast<bool>(IsControlEnabled(box))) {
        isUsable ? EnableControl(box) : DisableControl(box);
        HMSetControlHelpContent(box, isUsable ? nullptr : localized(texts_, CFSTR("Preview No Room")).get());
    }
}

/// The window gets wider by the column, or narrower.
void PreviewColumn::toggle() {
    isWanted_ = GetControl32BitValue(control(kShowPreview)) == 1;
    Rect window{};
    GetWindowContentBounds(window_, &window);
    if (!isWanted_) {
        const bool hasPanels = IsControlVisible(control(kMakersPlace));
        Rect beside{};
        Rect column{};
        GetControlBounds(control(hasPanels ? kMakersPlace : kNoMakersPanels), &beside);
        GetControlBounds(control(kPreviewPlace), &column);
        width_ = column.right - beside.right;
    }
    window.right = static_cast<SInt16>(window.right + (isWanted_ ? width_ : -width_));
    SetControlVisibility(control(kPreviewPlace), isWanted_, true);
    SetWindowContentBounds(window_, &window);
    if (session_ != nullptr) {
        show(*session_);
    }
}

// ---- Following the settings

void PreviewColumn::begin(std::function<void()> whenDrawn) {
    whenDrawn_ = std::move(whenDrawn);
    if (!hasDocument_) {
        return;
    }
    drawer_ = std::make_unique<PageDrawer>(drawerPath_);
    InstallEventLoopDescriptor(
        drawer_->newsDescriptor(), [](int, void* self) { static_cast<PreviewColumn*>(self)->takeNews(); }, this,
        &news_);
    if (session_ != nullptr) {
        show(*session_);
    }
}

void PreviewColumn::show(const PrintSession& session) {
    session_ = &session;
    showBox();
    if (!drawer_ || !isShown() || document_.pageCount == 0) {
        return;
    }
    const std::optional<SheetPlan> before = job_.update(session);
    if (!before) {
        return;
    }
    setStaticText(control(kPreviewStack), makeString(stackWords(job_.sheets(), session, texts_)));
    SetControl32BitMaximum(control(kPreviewNumber),
                           static_cast<SInt32>(std::max<std::size_t>(plan().sheets.size(), 1)));
    go(sideInstead(*before, side_, plan()));
}

void PreviewColumn::showDocument(const PrintSession& session) {
    job_.forget();
    if (drawer_) {
        show(session);
        go({});  // also to no side at all
    }
}

void PreviewColumn::tell(const std::string& sentence) {
    if (!sentence.empty() || document_.pageCount == 0) {
        setStaticText(control(kPreviewStack), makeString(sentence));
    }
}

void PreviewColumn::forget() {
    session_ = nullptr;
    job_.forget();
}

// ---- Turning

void PreviewColumn::go(const ShownSide& side) {
    side_ = side;
    measure();
    wish();
    showNumber();
    allowTurning();
    redraw();
}

bool PreviewColumn::handleHit(SInt32 number) {
    if (number == kShowPreview) {
        toggle();
        return true;
    }
    if (number < kPreviewPlace || number > kShowPreview) {
        return false;
    }
    if (!isFilled()) {
        return true;
    }
    switch (number) {
        case kPreviewFirst:
            go({});
            break;
        case kPreviewBack:
            go(turned(plan(), side_, -1));
            break;
        case kPreviewForward:
            go(turned(plan(), side_, 1));
            break;
        case kPreviewLast:
            go(lastSide(plan()));
            break;
        case kPreviewNumber:
            go({static_cast<std::size_t>(GetControl32BitValue(control(kPreviewNumber)) - 1), false});
            break;
        default:
            break;
    }
    return true;
}

bool PreviewColumn::handleKey(UniChar key) {
    switch (key) {
        case kHomeCharCode:
            go({});
            return true;
        case kEndCharCode:
            go(lastSide(plan()));
            return true;
        case kLeftArrowCharCode:
        case kUpArrowCharCode:
        case kPageUpCharCode:
            go(turned(plan(), side_, -1));
            return true;
        case kRightArrowCharCode:
        case kDownArrowCharCode:
        case kPageDownCharCode:
            go(turned(plan(), side_, 1));
            return true;
        default:
            return false;
    }
}

OSStatus PreviewColumn::handleSheet(EventHandlerCallRef, EventRef event, void* self) {
    auto& column = *static_cast<PreviewColumn*>(self);
    if (GetEventClass(event) == kEventClassControl) {
        column.draw(HIViewGetDrawContext(column.control(kPreviewSheet)));
        return noErr;
    }
    if (!column.isFilled()) {
        return eventNotHandledErr;
    }
    if (GetEventClass(event) == kEventClassMouse) {
        SInt32 notch = 0;
        GetEventParameter(event, kEventParamMouseWheelDelta, typeSInt32, nullptr, sizeof notch, nullptr, &notch);
        column.go(turned(column.plan(), column.side_, -notch));
        return noErr;
    }
    UniChar key = 0;
    GetEventParameter(event, kEventParamKeyUnicodes, typeUnicodeText, nullptr, sizeof key, nullptr, &key);
    return column.handleKey(key) ? noErr : eventNotHandledErr;
}

/// Who types a number and Return wants to see that sheet, not to print.
OSStatus PreviewColumn::handleNumberKey(EventHandlerCallRef, EventRef, void*) {
    return noErr;
}

void PreviewColumn::showNumber() const {
    if (!isFilled()) {
        setStaticText(control(kPreviewCount), makeString(""));
        SetControlTitleWithCFString(control(kPreviewSheet), makeString("").get());
        return;
    }
    SetControl32BitValue(control(kPreviewNumber), static_cast<SInt32>(side_.sheet + 1));
    setStaticText(control(kPreviewCount), makeString(sideWords(job_.sheets(), side_.sheet, side_.isSide2, texts_)));
    showWords();
}

/// What cannot be seen of the sheet is said with it.
void PreviewColumn::showWords() const {
    std::string words = sheetWords(job_.sheets(), side_.sheet, side_.isSide2, *session_, texts_);
    const auto needs = picturesOf(job_.sheets(), viewOf(side_));
    const PictureFinder find = job_.picturesIn(*drawer_);
    for (const PictureNeed& need : needs) {
        if (const PageFault fault = find(need).fault; fault != PageFault::none) {
            words += ". " + faultWords(need, fault, texts_);
        }
    }
    SetControlTitleWithCFString(control(kPreviewSheet), makeString(words).get());
}

/// A button that leads nowhere is gray, and does not keep the keys.
void PreviewColumn::allowTurning() const {
    const bool isFirst = !isFilled() || side_ == ShownSide();
    const bool isLast = !isFilled() || side_ == lastSide(plan());
    ControlRef focused = nullptr;
    GetKeyboardFocus(window_, &focused);
    for (const auto& [number, isGray] : {std::pair{kPreviewFirst, isFirst},
                                         {kPreviewBack, isFirst},
                                         {kPreviewForward, isLast},
                                         {kPreviewLast, isLast}}) {
        const ControlRef button = control(number);
        if (isGray && button == focused) {
            SetKeyboardFocus(window_, control(kPreviewSheet));
        }
        isGray ? DisableControl(button) : EnableControl(button);
    }
    isFirst&& isLast ? DisableControl(control(kPreviewNumber)) : EnableControl(control(kPreviewNumber));
}

// ---- Pictures

SheetView PreviewColumn::viewOf(const ShownSide& side) const {
    return {side.sheet, side.isSide2, size_.width, size_.height, size_.scale};
}

/// True when the place for the picture has become another.
bool PreviewColumn::measure() {
    HIRect bounds{};
    HIViewGetBounds(control(kPreviewSheet), &bounds);
    const double scale = HIWindowGetScaleFactor(window_);
    const auto pixels = [scale](double points) { return std::max(1, static_cast<int>(std::lround(points * scale))); };
    const SheetView size{0, false, pixels(bounds.size.width), pixels(bounds.size.height), scale};
    const bool isOther = size.width != size_.width || size.height != size_.height || size.scale != size_.scale;
    size_ = size;
    return isOther;
}

void PreviewColumn::wish() const {
    std::vector<PageWish> wishes;
    const auto add = [&](const ShownSide& side) {
        for (const PictureNeed& need : picturesOf(job_.sheets(), viewOf(side))) {
            wishes.push_back(wishFor(need, job_.sources()));
        }
    };
    if (isFilled()) {
        add(side_);
        std::ranges::for_each(neighboursOf(plan(), side_), add);
    }
    drawer_->wish(std::move(wishes));
}

std::vector<PagePicture> PreviewColumn::picturesOfSide() const {
    std::vector<PagePicture> pictures;
    const PictureFinder find = job_.picturesIn(*drawer_);
    for (const PictureNeed& need : picturesOf(job_.sheets(), viewOf(side_))) {
        pictures.push_back(find(need));
    }
    return pictures;
}

void PreviewColumn::takeNews() {
    const bool isNews = drawer_->takeNews();
    if (isNews && isFilled() && picturesOfSide() != drawn_) {
        showWords();  // there may be a fault
        redraw();
    }
}

void PreviewColumn::redraw() {
    image_.reset();
    Draw1Control(control(kPreviewSheet));
}

void PreviewColumn::draw(CGContextRef context) {
    if (!isFilled()) {
        return;
    }
    if (measure()) {
        image_.reset();
        wish();
    }
    if (!image_) {
        drawn_ = picturesOfSide();
        const Pixels picture = drawSheet(job_.sheets(), viewOf(side_), job_.picturesIn(*drawer_), texts_);
        image_.reset(CGImageCreate(static_cast<ByteCount>(picture.width), static_cast<ByteCount>(picture.height),
                                   picture.values.data()));
    }
    const HIRect place{{0, 0}, {size_.width / size_.scale, size_.height / size_.scale}};
    HIViewDrawCGImage(context, &place, image_.get());
    if (whenDrawn_ && std::ranges::all_of(drawn_, &PagePicture::isAsWished)) {
        std::exchange(whenDrawn_, nullptr)();
    }
}

void PreviewColumn::finish() {
    const auto isOpen = [](const PagePicture& picture) {
        return !picture.isAsWished && picture.fault == PageFault::none;
    };
    while (isFilled() && isShown() && std::ranges::any_of(picturesOfSide(), isOpen)) {
        pollfd news{drawer_->newsDescriptor(), POLLIN, 0};
        poll(&news, 1, -1);
        takeNews();
    }
}
