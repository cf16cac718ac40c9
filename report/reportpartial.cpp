#include "report/reportpartial.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <limits>
#include <new>

namespace report {

namespace {

constexpr QByteArrayView MAGIC = "Quillon partial\n";
constexpr quint32 PARTIAL_VERSION = 1;
constexpr QCryptographicHash::Algorithm SUM = QCryptographicHash::Sha1;
constexpr qsizetype SUM_SIZE = 20;
constexpr qsizetype HEADER_SIZE =
    MAGIC.size() + sizeof(PARTIAL_VERSION) + sizeof(qint64) + SUM_SIZE;

const QString CUT = QStringLiteral("it is cut short");
const QString DAMAGED = QStringLiteral("it is damaged");

/// The same on every machine, whatever the toolkit's version.
void prepare(QDataStream& stream) {
    stream.setVersion(QDataStream::Qt_6_0);
    stream.setByteOrder(QDataStream::LittleEndian);
}

void write(QDataStream& to, const domain::Pattern& pattern,
           const domain::pattern_figures& figures) {
    to << pattern.mCount << figures.occurrences << figures.recordings;
    for (const domain::place& place : figures.places)
        to << place.recording << place.event;
    to << pattern.mSequence.size();
    for (const int index : pattern.run())
        to << index;
}

void writeBranches(QDataStream& to, const Findings& findings) {
    for (const key_findings& key : findings.keys()) {
        to << key.branch->mGesture;
        if (!key.branch->isValid())
            continue;
        to << key.branch->mBounds << key.figures->events << key.figures->recordings
           << key.branch->patternSize();
        for (const found_pattern& found : key.patterns)
            write(to, *found.pattern, *found.figures);
    }
}

QByteArray bodyOf(const Findings& findings) {
    const Log& log = findings.log();
    QByteArray body;
    QDataStream to(&body, QIODevice::WriteOnly);
    prepare(to);
    to << log.path << log.complete << log.recordings << log.events << log.longestRun << log.faults;
    to << QStringList(log.keys.begin(), log.keys.end());
    writeBranches(to, findings);
    return body;
}

/// Reads the body of a partial. Whoever made it may have meant harm: nothing of it is believed.
class Body {
public:
    explicit Body(const QByteArray& bytes)
        : mFrom(bytes) {
        prepare(mFrom);
    }

    /// False when it is damaged.
    bool read(Log& log) {
        QStringList keys;
        mFrom >> log.path >> log.complete >> log.recordings >> log.events >> log.longestRun >>
            log.faults >> keys;
        log.keys.assign(keys.begin(), keys.end());
        log.figures.keys.resize(log.keys.size());
        for (int i = 0; isSound() && i < keys.size(); ++i)
            readBranch(i, log);
        return isSound() && mFrom.atEnd() && log.recordings >= 0 && log.events >= 0;
    }

private:
    bool isSound() const { return !mIsWrong && mFrom.status() == QDataStream::Ok; }

    void require(bool holds) { mIsWrong = mIsWrong || !holds; }

    void readBranch(int index, Log& log) {
        domain::Branch branch;
        const auto at = static_cast<std::size_t>(index);
        mFrom >> branch.mGesture;
        require(
            branch.mGesture == domain::GESTURE_NONE ||
            (branch.mGesture >= domain::GESTURE_DOWN && branch.mGesture <= domain::GESTURE_MENU));
        if (!isSound() || branch.mGesture == domain::GESTURE_NONE) {
            require(log.nest.addSlot());
            return;
        }
        int patterns = 0;
        branch.mKey = log.keys[at];
        mFrom >> branch.mBounds >> log.figures.keys[at].events >> log.figures.keys[at].recordings >>
            patterns;
        require(branch.isValid() && log.nest.set(index, branch));
        for (int i = 0; isSound() && i < patterns; ++i)
            readPattern(index, log);
    }

    void readPattern(int index, Log& log) {
        domain::Pattern& pattern = *log.nest.branchAt(index)->mPatterns.pushBack();
        domain::pattern_figures figures;
        int size = 0;
        mFrom >> pattern.mCount >> figures.occurrences >> figures.recordings;
        for (domain::place& place : figures.places)
            mFrom >> place.recording >> place.event;
        mFrom >> size;
        require(size > 2 && mFrom.device()->bytesAvailable() / qint64(sizeof(int)) >= size &&
                pattern.mSequence.setSize(size));
        const int keys = static_cast<int>(log.keys.size());
        for (int i = 0; isSound() && i < size; ++i) {
            mFrom >> pattern.mSequence[i];
            require(pattern.mSequence[i] >= 0 && pattern.mSequence[i] < keys);
        }
        require(isSound() && pattern.mSequence[0] == index && pattern.isCycle());
        log.figures.patterns.push_back(figures);
    }

    QDataStream mFrom;
    bool mIsWrong = false;
};

struct header {
    quint32 version = 0;
    qint64 size = 0;
    QByteArray sum;
};

/// Empty when `bytes` are the header of a partial that this program reads, else what is wrong.
QString readHeader(const QByteArray& bytes, header& header) {
    if (!bytes.startsWith(MAGIC.first(std::min(bytes.size(), MAGIC.size()))))
        return QStringLiteral("it is no partial");
    if (bytes.size() < HEADER_SIZE)
        return CUT;
    QDataStream from(bytes.mid(MAGIC.size()));
    prepare(from);
    from >> header.version >> header.size;
    header.sum = bytes.last(SUM_SIZE);
    if (header.version != PARTIAL_VERSION)
        return QStringLiteral("it is a partial of version %1; this program reads version %2")
            .arg(header.version)
            .arg(PARTIAL_VERSION);
    return {};
}

/// Takes the memory of what is there, not of what is announced.
QByteArray readBody(QIODevice& device, qint64 size) {
    constexpr qint64 PIECE = 1 << 20;
    QByteArray body;
    while (body.size() < size) {
        const QByteArray piece = device.read(std::min(PIECE, size - body.size()));
        if (piece.isEmpty())
            break;
        body += piece;
    }
    return body;
}

QString readPartial(const QByteArray& head, QIODevice& device, Log& part) {
    header header;
    QString fault = readHeader(head, header);
    if (!fault.isEmpty())
        return fault;
    const QByteArray body = readBody(device, header.size);
    if (body.size() < header.size)
        return CUT;
    try {
        if (QCryptographicHash::hash(body, SUM) == header.sum && Body(body).read(part))
            return {};
    } catch (const std::bad_alloc&) {
        // More than there is was announced.
    }
    return DAMAGED;
}

} // namespace

void PartialWriter::write(const Findings& findings) {
    const QByteArray body = bodyOf(findings);
    QByteArray head;
    QDataStream to(&head, QIODevice::WriteOnly);
    prepare(to);
    to << PARTIAL_VERSION << qint64(body.size());
    mOutput << MAGIC << QByteArrayView(head) << QByteArrayView(QCryptographicHash::hash(body, SUM))
            << QByteArrayView(body);
}

QString read_partials(QIODevice& device, const std::function<void(Log& part)>& take) {
    QByteArray head = device.read(HEADER_SIZE);
    do {
        Log part;
        QString fault = readPartial(head, device, part);
        if (!fault.isEmpty())
            return fault;
        take(part);
        head = device.read(HEADER_SIZE);
    } while (!head.isEmpty()); // a pipe does not tell before
    return {};
}

} // namespace report
