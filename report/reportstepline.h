#pragma once

#include <QString>

#include <functional>
#include <map>
#include <set>

namespace report {

/// The steps of a sequence in a line that does not have room for all of them, as in
/// "a > b > … 12 more > c > … 3 more > a".
class StepLine {
public:
    using StepText = std::function<QString(int step)>;

    /// Shows the first and the last of `steps` steps, whether there is room or not.
    StepLine(int steps, StepText stepText, int columns);

    /// Shows these steps too. False when there is no room for one, and it is left out.
    bool show(const std::set<int>& steps);

    /// Shows more steps from both ends on, as many as there is room for.
    void fill();

    QString text() const;

private:
    bool show(int step);

    const int mSteps;
    const StepText mStepText;
    const int mColumns;
    std::map<int, QString> mShown;
};

/// The texts of all steps, in the same form.
QString all_steps(int steps, const StepLine::StepText& stepText);

} // namespace report
