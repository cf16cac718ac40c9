#pragma once

#include "json/jsonreader.h"
#include "json/jsonstack.h"

#include <QString>

#include <vector>

/// The rules of the parser as plainly as they can be put: copies everything and looks everything
/// up by walking. What the real one is held against. For one text.
class PlainParser : public json::Stack {
public:
    explicit PlainParser(const QString& text)
        : mText(text.left(text.indexOf(QChar(0)))) {}

    bool parse(json::Reader* root) {
        push(root);
        for (; mAt < mText.size(); ++mAt) {
            const QChar c = mText[mAt];
            const bool fine = c == u'"' ? string() : c == u'}' || c == u']' ? close(c) : other(c);
            if (!fine)
                return false;
        }
        return true;
    }

    bool push(json::Reader* reader) override {
        mEntries.push_back({reader, QChar(), 0});
        return true;
    }

    int arrayIndex() const override { return mEntries.empty() ? 0 : mEntries.back().count; }

private:
    struct Entry {
        json::Reader* reader;
        QChar bracket;
        int count;
    };

    bool other(QChar c) {
        if (c == u'{' || c == u'[')
            open(c);
        else if (c == u':')
            mIsValue = true;
        else if (c == u',' || c.isSpace())
            flush();
        else if (mBare < 0)
            mBare = mAt;
        if (c == u',')
            mIsValue = false;
        return true;
    }

    void open(QChar bracket) {
        mIsValue = false;
        mEntries.push_back({nullptr, bracket, 0});
        if (bracket == u'{')
            current()->startObject(*this, mName);
        else
            current()->startArray(*this, mName);
        mName = QString();
    }

    bool close(QChar closing) {
        if (closing == u'}')
            flush();
        else
            flushElement();
        mIsValue = false;
        while (!mEntries.empty()) {
            const Entry top = mEntries.back();
            if (top.reader)
                tellEnd(top.reader, closing);
            mEntries.pop_back();
            if (top.bracket == (closing == u'}' ? u'{' : u'['))
                return true;
        }
        return false;
    }

    void tellEnd(json::Reader* reader, QChar closing) {
        if (closing == u'}')
            reader->endObject(*this);
        else
            reader->endArray(*this);
        reader->jsonPop();
    }

    bool string() {
        const qsizetype close = mText.indexOf(u'"', mAt + 1);
        if (close < 0)
            return false;
        const QString inside = mText.mid(mAt + 1, close - mAt - 1);
        mAt = close;
        const QString value = inside.isEmpty() ? QString() : inside;
        if (mIsValue)
            current()->jsonString(*this, mName, value);
        mName = mIsValue ? QString() : value;
        mIsValue = false;
        return true;
    }

    void flush() {
        if (group() == u'[')
            return flushElement();
        double number = 0;
        const bool pending = mBare >= 0;
        if (takeNumber(number) && mIsValue)
            current()->jsonFloat(*this, mName, number);
        if (pending && mIsValue)
            mName = QString();
    }

    void flushElement() {
        if (!mName.isEmpty()) {
            current()->jsonString(*this, QString(), mName);
            ++mEntries.back().count;
            mName = QString();
        }
        double number = 0;
        if (takeNumber(number)) {
            current()->jsonFloat(*this, QString(), number);
            ++mEntries.back().count;
        }
    }

    bool takeNumber(double& number) {
        bool ok = false;
        if (mBare >= 0)
            number = mText.mid(mBare, mAt - mBare).toDouble(&ok);
        mBare = -1;
        return ok;
    }

    json::Reader* current() const {
        auto entry = mEntries.rbegin();
        while (!entry->reader)
            ++entry;
        return entry->reader;
    }

    QChar group() const {
        auto entry = mEntries.rbegin();
        while (entry != mEntries.rend() && entry->bracket.isNull())
            ++entry;
        return entry == mEntries.rend() ? QChar() : entry->bracket;
    }

    const QString mText;
    qsizetype mAt = 0;
    std::vector<Entry> mEntries;
    QString mName;
    qsizetype mBare = -1; // where the pending bare value begins
    bool mIsValue = false;
};
