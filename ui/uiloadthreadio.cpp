#include "ui/uiloadthreadio.h"

#include <cassert>

namespace ui {

namespace {

const LoadIoList::Factory IN_FACTORY(false);

} // namespace

void LoadIo::clear() {
    mUrl = QUrl();
    mNest.clear();
}

void LoadIo::setToMerge(const domain::Nest& nest) {
    mNest.setTo(nest);
}

LoadIo* LoadIoList::Factory::nullObject() const {
    return nullptr;
}

LoadIo* LoadIoList::Factory::newObject() const {
    return new LoadIo;
}

void LoadIoList::Factory::deleteObject(LoadIo* io) const {
    delete io;
}

void LoadIoList::Factory::initializeObject(LoadIo* io) const {
    if (io)
        io->clear();
}

LoadIo* LoadIoList::Factory::setObject(LoadIo* /*target*/, LoadIo* /*source*/) const {
    // A request carries a whole nest and belongs to its node: it only ever moves from list to list.
    // A test names the next line by its number, 42.
    assert(false);
    return nullptr;
}

LoadIoList::LoadIoList()
    : ManagedList(IN_FACTORY) {}

} // namespace ui
