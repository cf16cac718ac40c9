#include "report/reportstepline.h"

#include <QStringList>

#include <utility>

namespace report {

namespace {

const QString ARROW = QStringLiteral(" > ");

} // namespace

StepLine::StepLine(int steps, StepText stepText, int columns)
    : mSteps(steps)
    , mStepText(std::move(stepText))
    , mColumns(columns) {
    for (const int end : {0, steps - 1})
        mShown.emplace(end, mStepText(end));
}

bool StepLine::show(const std::set<int>& steps) {
    bool hasRoom = true;
    for (const int step : steps)
        hasRoom &= show(step);
    return hasRoom;
}

/// False when there is no room for the step.
bool StepLine::show(int step) {
    const auto [added, isNew] = mShown.emplace(step, mStepText(step));
    if (!isNew || text().size() <= mColumns)
        return true;
    mShown.erase(added);
    return false;
}

void StepLine::fill() {
    bool hasRoom = true;
    for (int i = 1; hasRoom && i <= mSteps / 2; ++i)
        hasRoom = show(i) && show(mSteps - 1 - i);
}

QString StepLine::text() const {
    QStringList steps;
    int next = 0;
    for (const auto& [step, text] : mShown) {
        if (step > next)
            steps += QStringLiteral("… %1 more").arg(step - next);
        steps += text;
        next = step + 1;
    }
    return steps.join(ARROW);
}

QString all_steps(int steps, const StepLine::StepText& stepText) {
    QStringList texts;
    texts.reserve(steps);
    for (int i = 0; i < steps; ++i)
        texts += stepText(i);
    return texts.join(ARROW);
}

} // namespace report
