#include "watermark/editor/mark_history.h"

#include <cstring>

class MarkHistory::Command : public QUndoCommand {
public:
    Command(MarkHistory* history, MarkChange what, const WatermarkRecord& changed)
        : record_(&history->record_), what_(what), step_(history->step_), before_(*record_), after_(changed) {}

    [[nodiscard]] int id() const override { return static_cast<int>(what_); }
    bool mergeWith(const QUndoCommand* other) override {
        const auto* next = static_cast<const Command*>(other);
        if (next->step_ != step_) {
            return false;
        }
        after_ = next->after_;
        setObsolete(std::memcmp(&before_, &after_, sizeof before_) == 0);
        return true;
    }
    void undo() override { *record_ = before_; }
    void redo() override { *record_ = after_; }

private:
    WatermarkRecord* record_;
    MarkChange what_;
    int step_;
    WatermarkRecord before_;
    WatermarkRecord after_;
};

void MarkHistory::change(MarkChange what, const WatermarkRecord& changed) {
    if (std::memcmp(&record_, &changed, sizeof record_) != 0) {
        steps_.push(new Command(this, what, changed));
    }
}
