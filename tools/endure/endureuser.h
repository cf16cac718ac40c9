#pragma once

#include "tools/endure/endurelogs.h"

#include <QDir>
#include <QEvent>
#include <QList>
#include <QPointF>
#include <QTemporaryDir>

class QWidget;

namespace ui {
class LeafView;
class Win;
} // namespace ui

namespace endure {

/// Somebody who does one random thing after the other to the main window: loads logs, whole and
/// broken ones, draws rubber bands, steps through the bars, selects by rank, resizes, drags the
/// splitter, opens the dialog. Events go to the widgets as the toolkit would send them.
class User {
public:
    /// `window` outlives the user. `example` is a log to be loaded now and then.
    User(ui::Win& window, const QString& example, unsigned seed);

    /// Does one thing; returns its name.
    const char* act();

private:
    struct habit {
        const char* name;
        int weight; ///< How often, relative to the others.
        void (User::*act)();
    };

    static const QList<habit> HABITS;

    void addLog(const QString& name, const log_kind& kind);
    void loadOne();
    void loadSome();
    void loadBroken();
    void loadNothing();
    void band();
    void pressLeaf();
    void step();
    void selectByRank();
    void resize();
    void dragSplitter();
    void hideAndShow();
    void openDialog();
    void answer(QWidget* dialog);

    void drop(const QList<QUrl>& urls);
    void mouse(QWidget* widget, QEvent::Type type, const QPointF& place);
    void click(QWidget* widget, const QPointF& place);
    QPointF anywhere(const QWidget* widget);

    ui::Win& mWindow;
    ui::LeafView* mLeafView;
    Random mRandom;
    QTemporaryDir mFolder;
    QList<QUrl> mLogs;
    QList<QByteArray> mTexts; // short ones, to be broken
    bool mDrawsBand = false;
};

} // namespace endure
