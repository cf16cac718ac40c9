#pragma once

#include "collections/managedlist.h"
#include "domain/domainnest.h"

#include <QUrl>

namespace ui {

/// A request to read a log and, once it is loaded, its result.
class LoadIo {
public:
    LoadIo() = default;

    /// Back to an empty URL and an empty nest.
    void clear();

    /// The log's branches are to be added to a copy of `nest`.
    void setToMerge(const domain::Nest& nest);

    QUrl mUrl;
    domain::Nest mNest;
};

/// Requests on their way; the retired ones are a pool of spare objects.
class LoadIoList : public ManagedList<LoadIo*> {
public:
    class Factory : public ManagedFactory<LoadIo*> {
    public:
        using ManagedFactory::ManagedFactory;
        LoadIo* nullObject() const override;
        LoadIo* newObject() const override;
        void deleteObject(LoadIo* io) const override;
        void initializeObject(LoadIo* io) const override;

        /// Requests are moved, never copied: a programming error.
        LoadIo* setObject(LoadIo* target, LoadIo* source) const override;
    };

    LoadIoList();
};

} // namespace ui
