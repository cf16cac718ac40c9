#include "tools/endure/endurelogs.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace endure {

namespace {

bool isMenu(int key) {
    return key % 9 == 8;
}

QByteArray event(const char* name, const QByteArray& prefix, int key) {
    return QByteArray("\"") + name + "\": [0, \"" + prefix + QByteArray::number(key) + "\", " +
           QByteArray::number(key * 37 % 1200) + ", " + QByteArray::number(key * 53 % 800) + ".5]";
}

QByteArray press(const QByteArray& prefix, int key) {
    if (isMenu(key))
        return event("menu", prefix, key);
    return event("down", prefix, key) + ", " + event("up", prefix, key);
}

} // namespace

int below(int limit, Random& random) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

QByteArray log_text(const QByteArray& prefix, const log_kind& kind, Random& random) {
    QByteArray text = "[";
    for (int recording = 0; recording < kind.recordings; ++recording) {
        text += recording == 0 ? "{" : "},\n{";
        for (int i = 0; i < kind.events; ++i) {
            const int key = std::min(below(kind.keys, random), below(kind.keys, random));
            text += (i == 0 ? "" : ",\n") + press(prefix, key);
        }
    }
    return text + "}]\n";
}

QByteArray broken(QByteArray text, Random& random) {
    static constexpr std::array MISPLACED{"{", "}", "[",    "]",  "\"",
                                          ":", ",", "\xff", "\\", "1e999"};
    const auto anywhere = [&] { return below(static_cast<int>(text.size()) + 1, random); };
    if (below(3, random) == 0)
        text.truncate(anywhere());
    if (below(9, random) == 0)
        text.prepend(QByteArray("[{\"a\":").repeated(20000));
    for (int faults = below(9, random); faults > 0; --faults)
        text.insert(anywhere(), MISPLACED[random() % MISPLACED.size()]);
    return text;
}

QUrl write(const QDir& folder, const QString& name, const QByteArray& text) {
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush())
        throw std::runtime_error("cannot write " + file.fileName().toStdString());
    return QUrl::fromLocalFile(file.fileName());
}

} // namespace endure
