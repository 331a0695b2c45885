#include "watermark/editor/mark_history.h"

#include <cstring>

namespace {

/// Records are copied whole, so a step that brings everything back brings every byte back.
bool hasSameBytes(const WatermarkRecord& left, const WatermarkRecord& right) {
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison,cert-exp42-c,cert-flp37-c)
    return std::memcmp(&left, &right, sizeof left) == 0;
}

}  // namespace

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
        setObsolete(hasSameBytes(before_, after_));
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
    if (!hasSameBytes(record_, changed)) {
        steps_.push(new Command(this, what, changed));
    }
}
