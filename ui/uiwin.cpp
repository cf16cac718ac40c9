#include "ui/uiwin.h"

#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uileafrank.h"
#include "ui/uiappearance.h"
#include "ui/uisettings.h"
#include "ui/views/uibaraccessible.h"
#include "ui/views/uileafbar.h"
#include "ui/views/uileafview.h"
#include "ui/views/uipatternbar.h"
#include "ui/views/uiselectionview.h"
#include "ui/views/uiviewaccessible.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QFileDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QSplitter>

namespace ui {

namespace {

const QString LAST_FILE_SZ = QStringLiteral("last-file");

} // namespace

Win::Win(QWidget* parent)
    : QMainWindow(parent)
    , mShared(nullptr) {
    install_bar_accessible();
    install_view_accessible();
    mLook.init(QFontMetrics(QApplication::font()));
    set_appearance(mLook);
    createViews();
    setWindowTitle(tr("Quillon"));
    createMenuBar();
    setStyleSheet(Look::windowSheet());
    mLeafView->setFocus(); // the first Tab goes on to the leaf bar
    connect(&mLoadThread, &LoadThread::loadFinished, this, &Win::loadFinished);
    restoreLastFile();
}

void Win::requestLoad(const QUrl& url) {
    mLoadThread.load(url);
}

void Win::loadFinished() {
    QUrl url;
    if (!mLoadThread.getOutput(mNest, url))
        return;
    cache(mNest);
    mLeafView->onModelChanged();
    mShared.announceAll();
    update();
    QSettings().setValue(LAST_FILE_SZ, url);
}

void Win::requestOpenDialog() {
    const QString name = QFileDialog::getOpenFileName(this, tr("Open Log"), QString(),
                                                      tr("Log Files (*.txt *.json *.log)"));
    if (name.isEmpty())
        return;
    const QUrl url = QUrl::fromLocalFile(name);
    if (url.isValid())
        requestLoad(url);
}

void Win::selectByRank() {
    select_by_rank(mShared);
}

void Win::createViews() {
    auto* central = new QWidget;
    setCentralWidget(central);
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new QSplitter(Qt::Horizontal);
    mSelectionView = new SelectionView(mLook, mShared, nullptr);
    mLeafView = new LeafView(mLook, mShared, nullptr);
    splitter->addWidget(newSidePanel());
    splitter->addWidget(mLeafView);
    splitter->setStretchFactor(1, 1); // a resize is for the leaves
    connect(&mShared, &Shared::onSelectionChanged, mLeafView, &LeafView::selectionChanged);
    connect(mLeafView, &LeafView::requestLoad, this, &Win::requestLoad);
    grid->addWidget(splitter, 0, 0);
    central->setLayout(grid);
}

/// The bars above the selection view, wired to the selection in the order in which they hear of it.
QWidget* Win::newSidePanel() {
    auto* panel = new QWidget;
    auto* box = new QBoxLayout(QBoxLayout::TopToBottom);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(0);
    auto* leafBar = new LeafBar(mLook, mShared);
    auto* patternBar = new PatternBar(mLook, mShared);
    box->addWidget(leafBar);
    box->addWidget(patternBar);
    box->addWidget(mSelectionView);
    panel->setLayout(box);
    panel->setStyleSheet(Look::panelSheet());
    panel->setAutoFillBackground(true);
    connect(&mShared, &Shared::onSelectionChanged, mSelectionView,
            &SelectionView::selectionChanged);
    connect(&mShared, &Shared::onSelectionChanged, leafBar, &BarView::selectionChanged);
    connect(&mShared, &Shared::onSelectionChanged, patternBar, &BarView::selectionChanged);
    return panel;
}

void Win::createMenuBar() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    auto* open = new QAction(tr("&Open"), this);
    open->setShortcuts(QKeySequence::Open);
    open->setStatusTip(tr("Open a new log file"));
    connect(open, &QAction::triggered, this, &Win::requestOpenDialog);
    file->addAction(open);

    QMenu* select = menuBar()->addMenu(tr("&Select"));
    auto* byRank = new QAction(tr("By &Rank"), this);
    byRank->setStatusTip(tr("Select all based on highest rank"));
    connect(byRank, &QAction::triggered, this, &Win::selectByRank);
    select->addAction(byRank);
}

void Win::restoreLastFile() {
    const QUrl url = take_url(LAST_FILE_SZ);
    if (!url.isEmpty())
        requestLoad(url);
}

void Win::cache(const domain::Nest& nest) {
    LeafBuilder(mShared.mLeaves).from(nest);
    LeafLayout(mShared.mLeaves).layout();
}

} // namespace ui
