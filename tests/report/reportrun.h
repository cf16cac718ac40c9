#pragma once

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

/// Runs the program in a folder of its own, without a display.
class Report : public testing::Test {
protected:
    struct result {
        int status;
        std::string out;
        std::string err;
    };

    QString path(const char* name) const { return mDir.filePath(QString::fromUtf8(name)); }

    void write(const char* name, const QByteArray& text) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// Runs it with `arguments` by a shell, after what `script` does there.
    result run(const std::string& arguments, const QByteArray& input = QByteArray(),
               const std::string& script = std::string()) {
        const std::string command = script + " exec " QUILLON_REPORT " " + arguments;
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromLatin1(display));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(mDir.path());
        process.start(QStringLiteral("sh"),
                      {QStringLiteral("-c"), QString::fromStdString(command)});
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    QTemporaryDir mDir;
};

/// A recording of presses.
inline QByteArray downs(const QList<QByteArray>& keys) {
    QByteArray text = "{";
    for (const QByteArray& key : keys)
        text += (text.size() > 1 ? ",\"down\":[0,\"" : "\"down\":[0,\"") + key + "\"]";
    return text + "}";
}
