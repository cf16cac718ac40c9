#include "import/importtablereader.h"

#include "import/importcsvrows.h"
#include "import/importeventstore.h"
#include "import/importjsonrows.h"
#include "import/importtext.h"
#include "import/importtexts.h"

#include <limits>

namespace import {

namespace {

constexpr std::size_t NO_COLUMN = std::numeric_limits<std::size_t>::max();

/// Without the brackets around it: "(12, 8)", "[12, 8]".
std::string_view inner(std::string_view text) {
    constexpr std::string_view BRACKETS = " ()[]";
    const std::size_t from = std::min(text.find_first_not_of(BRACKETS), text.size());
    return text.substr(from, text.find_last_not_of(BRACKETS) + 1 - from);
}

} // namespace

/// The columns of a table by their place in `Rows::choose`.
class TableReader::Pass {
public:
    Pass(const table& table, Rows& rows, Collector& into)
        : mTable(table)
        , mRows(rows)
        , mInto(into) {}

    outcome run() {
        const QString unknown = choose();
        if (!unknown.isEmpty())
            return {outcome::Kind::WrongUsage, unknown};
        if (!isStored())
            mInto.beginRecording();
        QString fault = readRows();
        if (isStored() && !mStore.tell(mInto) && fault.isEmpty())
            fault = QStringLiteral("the temporary file for its rows cannot be read");
        mInto.endRecording();
        return outcome_of(fault);
    }

private:
    std::size_t want(const QString& name) {
        if (name.isEmpty())
            return NO_COLUMN;
        mNames.push_back(name);
        return mNames.size() - 1;
    }

    QString choose() {
        for (const QString& name : mTable.key)
            mKeys.push_back(want(name));
        mRecording = want(mTable.recording);
        mGesture = want(mTable.gesture);
        mX = want(mTable.x);
        mY = want(mTable.y);
        mXy = want(mTable.xy);
        mSort = want(mTable.sort);
        const QString unknown = mRows.choose(mNames);
        if (unknown.isEmpty())
            return {};
        QStringList known;
        for (const QString& name : mRows.columns())
            known.append(name);
        if (known.empty())
            return QStringLiteral("its first row, which names the columns, is over 64 MB or cut");
        return QStringLiteral("there is no column '%1'; there are: %2")
            .arg(unknown, known.join(QStringLiteral(", ")));
    }

    bool isStored() const { return mRecording != NO_COLUMN || mSort != NO_COLUMN; }

    QString readRows() {
        for (;;) {
            switch (mRows.next()) {
            case Rows::Next::Row:
                if (!take())
                    return QStringLiteral("the temporary file for its rows cannot be written");
                break;
            case Rows::Next::Odd:
                mInto.report(mRows.columns().empty() ? "no object, or too large a one"
                                                     : "other columns than the first row");
                break;
            case Rows::Next::Cut:
                return QStringLiteral("the text ends within a row");
            case Rows::Next::End:
                return mRows.fault();
            }
        }
    }

    std::string_view cell(std::size_t column) const {
        return column == NO_COLUMN ? std::string_view() : mRows.cell(column);
    }

    bool take() {
        const std::optional<Gesture> gesture = gestureOf(cell(mGesture));
        if (!gesture) {
            mInto.skip(cell(mGesture));
            return true;
        }
        event event;
        event.gesture = *gesture;
        mKey.clear();
        for (const std::size_t column : mKeys)
            appendToKey(mRows.cell(column));
        event.key = mKey;
        event.at = placeOfRow();
        const double order = orderOfRow();
        event.time = order;
        if (!isStored()) {
            mInto.add(event);
            return true;
        }
        if (mKey.empty()) {
            mInto.report("no key");
            return true;
        }
        return mStore.add(cell(mRecording), mSort == NO_COLUMN ? 0 : order, event);
    }

    void appendToKey(std::string_view text) {
        const std::size_t before = mKey.size();
        if (before > 0)
            mKey += ':';
        const std::size_t part = mKey.size();
        append_part(mKey, text);
        if (mKey.size() == part)
            mKey.resize(before);
    }

    std::optional<Gesture> gestureOf(std::string_view value) {
        if (mGesture == NO_COLUMN)
            return Gesture::Down;
        const std::uint32_t number = mValues.numberOf(value);
        if (number == mGestures.size())
            mGestures.push_back(mTable.map.gestureOf(
                QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()))));
        return mGestures[number];
    }

    std::optional<place> placeOfRow() {
        std::string_view x = cell(mX);
        std::string_view y = cell(mY);
        if (mXy != NO_COLUMN) {
            const std::string_view both = inner(cell(mXy));
            const std::size_t comma = std::min(both.find(','), both.size());
            x = both.substr(0, comma);
            y = both.substr(std::min(comma + 1, both.size()));
        }
        if (x.empty() && y.empty())
            return std::nullopt;
        const auto left = to_number(x);
        const auto top = to_number(y);
        if (left && top)
            return place{*left, *top};
        mInto.report("bad position");
        return std::nullopt;
    }

    /// A row whose number or time is none stays with the row before it.
    double orderOfRow() {
        if (mSort == NO_COLUMN)
            return 0;
        const auto order = to_time(cell(mSort));
        if (!order)
            mInto.report("bad number or time");
        mOrder = order.value_or(mOrder);
        return mOrder;
    }

    const table& mTable;
    Rows& mRows;
    Collector& mInto;
    EventStore mStore;
    std::vector<QString> mNames;
    std::vector<std::size_t> mKeys;
    std::size_t mRecording = NO_COLUMN;
    std::size_t mGesture = NO_COLUMN;
    std::size_t mX = NO_COLUMN;
    std::size_t mY = NO_COLUMN;
    std::size_t mXy = NO_COLUMN;
    std::size_t mSort = NO_COLUMN;
    double mOrder = 0;
    std::string mKey;
    Texts mValues;                                 // of the column of gestures
    std::vector<std::optional<Gesture>> mGestures; // by these
};

outcome TableReader::read(QIODevice& source, Collector& into) {
    Bytes bytes(source);
    std::unique_ptr<Rows> rows;
    if (mIsJson)
        rows = std::make_unique<JsonRows>(bytes);
    else
        rows = std::make_unique<CsvRows>(bytes);
    return Pass(mTable, *rows, into).run();
}

} // namespace import
