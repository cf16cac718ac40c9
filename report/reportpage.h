#pragma once

#include <QByteArray>

namespace report {

/// What stands before and behind the data in the page that explores them. Its policy lets a browser
/// run and apply nothing but the page's own script and styles.
struct page {
    QByteArray before;
    QByteArray behind;
};

/// The page, of the files in report/page.
page explorer_page();

/// JSON as it may stand in the page: with no character that ends or begins an element.
QByteArray page_data(QByteArray json);

} // namespace report
