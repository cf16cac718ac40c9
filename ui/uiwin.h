#pragma once

#include "domain/domainnest.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/uiloadthread.h"

#include <QMainWindow>
#include <QUrl>

namespace ui {

class LeafView;
class SelectionView;

/// The program's one window: its menus, views and selection wiring, the way of a log from the open
/// dialog, a drop or the last run to the loader, and of a finished load to the views. A load
/// replaces what was shown; the selection stays.
///
/// The settings value "last-file" is empty from the start of a run until a load has finished, so
/// that a log that kills the program is not opened at every start.
class Win : public QMainWindow {
    Q_OBJECT

public:
    explicit Win(QWidget* parent);

private Q_SLOTS:
    void requestLoad(const QUrl& url);

    /// Collects the newest load. A signal whose result was collected already changes nothing.
    void loadFinished();

    void requestOpenDialog();

    /// Selects all leaves with patterns, highest rank first, the highest in focus.
    void selectByRank();

private:
    void createViews();
    QWidget* newSidePanel();
    void createMenuBar();
    void restoreLastFile();
    void cache(const domain::Nest& nest);

    Look mLook;
    domain::Nest mNest; ///< What the leaves point into; changed right before they are rebuilt.
    Shared mShared;
    SelectionView* mSelectionView = nullptr; ///< A child of the window.
    LeafView* mLeafView = nullptr;           ///< A child of the window.
    LoadThread mLoadThread;                  ///< The last member: joined before the others go.
};

} // namespace ui
