#include "domain/keyiterator.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

TEST(KeyIterator, SkipsEmptyParts) {
    const struct {
        QString key;
        QStringList parts;
    } rows[] = {
        {QString(), {}},
        {QStringLiteral(":"), {}},
        {QStringLiteral("ab"), {QStringLiteral("ab")}},
        {QStringLiteral("ab::cd:"), {QStringLiteral("ab"), QStringLiteral("cd")}},
        {QStringLiteral("::x:yz"), {QStringLiteral("x"), QStringLiteral("yz")}},
    };

    for (const auto& row : rows) {
        KeyIterator it(row.key);
        QStringList parts;
        QStringView part;
        while (it.getNext(part))
            parts.append(part.toString());
        EXPECT_EQ(parts, row.parts) << row.key.toStdString();
        EXPECT_FALSE(it.getNext(part));
    }
}

} // namespace
