#pragma once

#include "fuzz/plain/plaincyclebuilder.h"
#include "json/jsonreader.h"
#include "json/jsonstack.h"

#include <QRectF>
#include <QString>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

/// The rules by which a log becomes branches, as plainly as they can be put, with the analysis of
/// every recording by the plain rules for cycles. What a log leaves unfinished meets the next one.
class PlainNestReader : public json::Reader {
public:
    struct branch {
        QString key; ///< Empty in a slot that was only reserved.
        int gesture = -1;
        QRectF bounds;
        std::vector<PlainCycleBuilder::found> patterns;
    };

    /// Another log, into no branches.
    void begin() {
        mKeys.clear();
        mBranches.clear();
    }

    const std::vector<branch>& branches() const { return mBranches; }

    void startObject(json::Stack& stack, const QString& /*key*/) override {
        stack.push(this);
        mRecording.clear();
        mTrace.clear();
    }

    void endObject(json::Stack& /*stack*/) override {
        if (mRecording.empty())
            return;
        findPatterns();
        for (const auto& [index, recorded] : mRecording) {
            const auto at = static_cast<std::size_t>(index);
            mBranches.resize(std::max(mBranches.size(), at + 1));
            merge(mBranches[at], recorded);
        }
        mRecording.clear();
    }

    void startArray(json::Stack& stack, const QString& key) override {
        static const std::map<QString, int> GESTURES{
            {QStringLiteral("down"), 1}, {QStringLiteral("up"), 2}, {QStringLiteral("menu"), 3}};
        stack.push(this);
        mEvent = branch();
        if (GESTURES.contains(key))
            mEvent.gesture = GESTURES.at(key);
    }

    void endArray(json::Stack& /*stack*/) override {
        if (mEvent.gesture != -1 && !mEvent.key.isEmpty())
            add(mEvent);
        mEvent = branch();
    }

    void jsonString(json::Stack& stack, const QString& /*key*/, const QString& value) override {
        if (mEvent.gesture != -1 && stack.arrayIndex() == 1)
            mEvent.key = QString(value.constData(), value.size());
    }

    void jsonFloat(json::Stack& stack, const QString& /*key*/, double value) override {
        if (mEvent.gesture == -1)
            return;
        if (stack.arrayIndex() == 2) {
            mEvent.bounds.setX(static_cast<float>(value));
            mEvent.bounds.setWidth(1);
        } else if (stack.arrayIndex() == 3) {
            mEvent.bounds.setY(static_cast<float>(value));
            mEvent.bounds.setHeight(1);
        }
    }

private:
    void add(const branch& event) {
        const auto [known, isNew] = mKeys.try_emplace(event.key, int(mBranches.size()));
        if (isNew)
            mBranches.emplace_back();
        merge(mRecording[known->second], event);
        if (event.gesture != 2)
            mTrace.push_back(known->second);
    }

    /// The trace may name branches of a recording that was given up; their patterns are lost too.
    void findPatterns() {
        std::set<int> menus;
        for (const auto& [index, recorded] : mRecording) {
            if (recorded.gesture == 3)
                menus.insert(index);
        }
        PlainCycleBuilder cycles(mTrace, menus);
        for (const auto& [index, patterns] : cycles.run()) {
            const auto recorded = mRecording.find(index);
            if (recorded != mRecording.end())
                recorded->second.patterns = patterns;
        }
    }

    static void merge(branch& into, const branch& other) {
        if (into.key.isEmpty()) {
            into = other;
            return;
        }
        if (into.key != other.key)
            return;
        into.bounds |= other.bounds;
        for (const PlainCycleBuilder::found& pattern : other.patterns)
            merge(into.patterns, pattern);
    }

    static void merge(std::vector<PlainCycleBuilder::found>& patterns,
                      const PlainCycleBuilder::found& other) {
        for (PlainCycleBuilder::found& known : patterns) {
            if (known.sequence == other.sequence) {
                ++known.count;
                return;
            }
        }
        patterns.push_back(other);
    }

    std::map<QString, int> mKeys;
    std::vector<branch> mBranches;
    std::map<int, branch> mRecording;
    std::vector<int> mTrace;
    branch mEvent;
};
