#include "driver/pages/page_background.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

namespace {

using Rectangle = QPDFObjectHandle::Rectangle;

constexpr double kCovered = 0.97;       // of the page: it is painted all over
constexpr double kMostlyCovered = 0.5;  // a picture of that size hides a mark

double overlap(const Rectangle& page, const Rectangle& painted) {
    const double width = std::min(page.urx, painted.urx) - std::max(page.llx, painted.llx);
    const double height = std::min(page.ury, painted.ury) - std::max(page.lly, painted.lly);
    const double area = (page.urx - page.llx) * (page.ury - page.lly);
    return width > 0 && height > 0 && area > 0 ? width * height / area : 0;
}

/// The box around a rectangle that a matrix has moved.
Rectangle moved(const Rectangle& rectangle, const Matrix& matrix) {
    Rectangle box(INFINITY, INFINITY, -INFINITY, -INFINITY);
    for (const double x : {rectangle.llx, rectangle.urx}) {
        for (const double y : {rectangle.lly, rectangle.ury}) {
            const double left = matrix.a * x + matrix.c * y + matrix.e;
            const double bottom = matrix.b * x + matrix.d * y + matrix.f;
            box = Rectangle(std::min(box.llx, left), std::min(box.lly, bottom), std::max(box.urx, left),
                            std::max(box.ury, bottom));
        }
    }
    return box;
}

/// Follows the content up to the first thing that is drawn and is no white page.
class Reader : public QPDFObjectHandle::ParserCallbacks {
public:
    Reader(QPDFObjectHandle resources, const Rectangle& page, const Matrix& space, int depth)
        : resources_(std::move(resources)), page_(page), depth_(depth) {
        state_.space = space;
    }

    void contentSize(std::size_t /*size*/) override {}
    void handleEOF() override {}
    void handleObject(QPDFObjectHandle object, std::size_t offset, std::size_t length) override {
        if (!object.isOperator()) {
            operands_.push_back(object);
            return;
        }
        end_ = offset + length;
        act(object.getOperatorValue());
        operands_.clear();
    }

    [[nodiscard]] const PageBackground& background() const { return background_; }

private:
    struct State {
        Matrix space;
        bool isWhite = false;  // what areas are filled with
    };

    [[nodiscard]] double number(std::size_t index) {
        return index < operands_.size() && operands_[index].isNumber() ? operands_[index].getNumericValue() : 0;
    }

    void act(std::string_view name) {
        static constexpr std::array<std::string_view, 9> kDrawing{"S", "s", "sh", "Tj", "TJ", "'", "\"", "BI", "ID"};
        static constexpr std::array<std::string_view, 6> kFilling{"f", "F", "f*", "B", "B*", "b"};
        if (name == "q") {
            saved_.push_back(state_);
        } else if (name == "Q") {
            if (!saved_.empty()) {
                state_ = saved_.back();
                saved_.pop_back();
            }
        } else if (name == "cm") {
            state_.space = Matrix{number(0), number(1), number(2), number(3), number(4), number(5)} * state_.space;
        } else if (name == "g" || name == "rg" || name == "k" || name == "sc" || name == "scn") {
            setColor();
        } else if (name == "cs") {
            state_.isWhite = false;
        } else if (name == "re") {
            path_.emplace_back(std::min(number(0), number(0) + number(2)), std::min(number(1), number(1) + number(3)),
                               std::max(number(0), number(0) + number(2)), std::max(number(1), number(1) + number(3)));
        } else if (name == "n") {
            path_.clear();
            isOtherPath_ = false;
        } else if (name == "m" || name == "l" || name == "c" || name == "v" || name == "y") {
            isOtherPath_ = true;
        } else if (std::ranges::find(kFilling, name) != kFilling.end()) {
            fill();
        } else if (name == "Do") {
            draw();
        } else if (std::ranges::find(kDrawing, name) != kDrawing.end()) {
            terminateParsing();
        }
    }

    /// White is all that a screen gives, or nothing that a press prints.
    void setColor() {
        const std::size_t count = operands_.size();
        const double full = count == 4 ? 0 : 1;
        state_.isWhite = (count == 1 || count == 3 || count == 4) &&
                         std::ranges::all_of(operands_, [full](QPDFObjectHandle component) {
                             return component.isNumber() && component.getNumericValue() == full;
                         });
    }

    void fill() {
        const bool coversPage =
            !isOtherPath_ && path_.size() == 1 && overlap(page_, moved(path_[0], state_.space)) > kCovered;
        if (!coversPage || !state_.isWhite) {
            terminateParsing();
            return;
        }
        background_ = {PageBackground::Place::behindWhite, end_, state_.space};
        path_.clear();
    }

    void draw() {
        terminateParsing();
        QPDFObjectHandle objects =
            resources_.isDictionary() ? resources_.getKey("/XObject") : QPDFObjectHandle::newNull();
        if (!objects.isDictionary() || operands_.empty() || !operands_[0].isName()) {
            return;
        }
        QPDFObjectHandle object = objects.getKey(operands_[0].getName());
        if (object.isImage()) {
            if (overlap(page_, moved(Rectangle(0, 0, 1, 1), state_.space)) > kMostlyCovered) {
                background_.place = PageBackground::Place::inFront;
            }
        } else if (object.isFormXObject() && depth_ > 0) {
            look(object);
        }
    }

    /// Nothing can come into a form, which other pages may draw as well.
    void look(QPDFObjectHandle form) {
        Matrix space = state_.space;
        QPDFObjectHandle matrix = form.getDict().getKey("/Matrix");
        if (matrix.isMatrix()) {
            const QPDFObjectHandle::Matrix own = matrix.getArrayAsMatrix();
            space = Matrix{own.a, own.b, own.c, own.d, own.e, own.f} * space;
        }
        Reader reader(form.getDict().getKey("/Resources"), page_, space, depth_ - 1);
        form.parseAsContents(&reader);
        if (reader.background().place != PageBackground::Place::beforeContent) {
            background_.place = PageBackground::Place::inFront;
        }
    }

    QPDFObjectHandle resources_;
    Rectangle page_;
    int depth_;
    std::vector<QPDFObjectHandle> operands_;
    State state_;
    std::vector<State> saved_;
    std::vector<Rectangle> path_;
    bool isOtherPath_ = false;
    std::size_t end_ = 0;
    PageBackground background_;
};

}  // namespace

PageBackground backgroundOf(QPDFPageObjectHelper page, const PageBox& box) {
    constexpr int kDeepestForm = 4;
    Reader reader(page.getAttribute("/Resources", false), box.box, {}, kDeepestForm);
    try {
        page.parseContents(&reader);
    } catch (const std::exception&) {  // whatever draws the page will say what is wrong with it
        return {};
    }
    return reader.background();
}
