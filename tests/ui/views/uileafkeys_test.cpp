#include "ui/leaves/uishared.h"
#include "ui/views/uileafkeys.h"

#include <QKeyEvent>

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// The leaf in focus and, in brackets, the selected ones.
std::string selected(const ui::Shared& shared) {
    std::ostringstream text;
    text << shared.leafSelection().mPrimary << " (";
    for (const int index : shared.leafSelection().mAlternates)
        text << " " << index;
    text << " )";
    return text.str();
}

TEST(LeafKeys, LeadFromLeafToLeaf) {
    ui::Shared shared(nullptr);
    ui::Leaf leaf;
    for (const QPointF& place : {QPointF(10, 10), {100, 12}, {10, 100}, {103, 12}, {60, 61}}) {
        ++leaf.mIndex;
        shared.mLeaves.add(leaf);
        shared.mLeaves.front()->mPos = place;
    }

    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        const char* selected;
        bool isMeant = true;
    } rows[] = {{Qt::Key_Right, {}, "0 ( 0 )"}, // none was in focus
                {Qt::Key_Right, Qt::KeypadModifier, "1 ( 3 1 )"},
                {Qt::Key_Right, {}, "3 ( 3 1 )"},
                {Qt::Key_Right, {}, "3 ( 3 1 )"}, // there is none beyond
                {Qt::Key_Left, {}, "1 ( 3 1 )"},
                {Qt::Key_Left, {}, "0 ( 0 )"},
                {Qt::Key_Down, {}, "4 ( 4 )"},
                {Qt::Key_Up, {}, "1 ( 3 1 )"},
                {Qt::Key_End, {}, "4 ( 4 )"},
                {Qt::Key_Left, Qt::ControlModifier, "4 ( 4 )", false},
                {Qt::Key_A, {}, "4 ( 4 )", false},
                {Qt::Key_Home, Qt::ShiftModifier, "0 ( 4 0 )"},
                {Qt::Key_Right, Qt::ShiftModifier, "1 ( 4 0 3 1 )"},
                {Qt::Key_Left, Qt::ShiftModifier, "0 ( 4 0 3 1 )"},
                {Qt::Key_Escape, {}, "-1 ( )"},
                {Qt::Key_A, Qt::ControlModifier, "4 ( 4 3 2 1 0 )"}};

    for (const auto& row : rows) {
        const QKeyEvent event(QEvent::KeyPress, row.key, row.modifiers);
        EXPECT_EQ(ui::select_by_key(shared, {110, 110}, 6, event), row.isMeant);
        EXPECT_EQ(selected(shared), row.selected) << "row " << &row - rows;
    }
    shared.mLeaves.clear();
    ui::select_by_key(shared, {110, 110}, 6, {QEvent::KeyPress, Qt::Key_Home, {}});
    EXPECT_EQ(shared.leafSelection().mAlternates.size(), 5) << "there is no leaf to go to";
}

} // namespace
