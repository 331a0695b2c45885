// The record under the editor's hands, with every step that led to it.
#pragma once

#include "watermark/records/watermark_record.h"

#include <QUndoStack>

/// What a step changed. Steps that change the same thing one after another are one step.
enum class MarkChange { kind = 1, text, font, fontSize, color, density, angle, scale, offset, units, picture };

class MarkHistory {
public:
    explicit MarkHistory(const WatermarkRecord& start) : record_(start) {}
    /// The stack tells of its end; nobody is there to hear it.
    ~MarkHistory() { steps_.blockSignals(true); }
    MarkHistory(const MarkHistory&) = delete;
    MarkHistory& operator=(const MarkHistory&) = delete;

    [[nodiscard]] const WatermarkRecord& record() const { return record_; }
    void change(MarkChange what, const WatermarkRecord& changed);
    /// The next step is one of its own, whatever it changes: a drag has ended.
    void endStep() { ++step_; }

    /// For its signals, its state, undo and redo.
    [[nodiscard]] QUndoStack* steps() { return &steps_; }

private:
    class Command;

    WatermarkRecord record_;
    int step_ = 0;
    QUndoStack steps_;
};
