#pragma once

#include "json/jsonreader.h"
#include "json/jsonstack.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <string>
#include <utility>

/// Writes every callback into a text shared with other recorders, one line each: its name, its
/// arguments and the array index at that moment.
class Recorder : public json::Reader {
public:
    using Hook = std::function<void(json::Stack&)>;

    /// `name` begins every line. The hooks run after the line of the start they are named for.
    Recorder(std::string name, std::string& lines, Hook onObject = {}, Hook onArray = {})
        : mName(std::move(name))
        , mLines(lines)
        , mOnObject(std::move(onObject))
        , mOnArray(std::move(onArray)) {}

    void startObject(json::Stack& stack, const QString& key) override {
        write("{ " + quoted(key), &stack);
        if (mOnObject)
            mOnObject(stack);
    }

    void endObject(json::Stack& stack) override { write("}", &stack); }

    void startArray(json::Stack& stack, const QString& key) override {
        write("[ " + quoted(key), &stack);
        if (mOnArray)
            mOnArray(stack);
    }

    void endArray(json::Stack& stack) override { write("]", &stack); }

    void jsonString(json::Stack& stack, const QString& key, const QString& value) override {
        write("string " + quoted(key) + " " + quoted(value), &stack);
    }

    void jsonFloat(json::Stack& stack, const QString& key, double value) override {
        write("float " + quoted(key) + " " + QByteArray::number(value, 'g', 17), &stack);
    }

    void jsonPop() override { write("pop", nullptr); }

private:
    static QByteArray quoted(const QString& text) {
        if (text.isNull())
            return "null";
        if (text.isValidUtf16())
            return '\'' + text.toUtf8() + '\'';
        return QByteArray(reinterpret_cast<const char*>(text.utf16()), 2 * text.size()).toHex();
    }

    void write(const QByteArray& event, const json::Stack* stack) {
        mLines.append(mName).append(event.data(), static_cast<std::size_t>(event.size()));
        if (stack)
            mLines.append(" @").append(std::to_string(stack->arrayIndex()));
        mLines += '\n';
    }

    std::string mName;
    std::string& mLines;
    Hook mOnObject;
    Hook mOnArray;
};

/// Which of its starts a root reader answers with a push, and of whom.
enum class Pushes { Nothing, ItselfInArrays, Itself, ChildInObjects, TwiceInObjects };

/// The lines of a parse by `parse(root)`, and its result as the last line.
template <typename Parse>
std::string record(Pushes pushes, Parse parse) {
    std::string lines;
    json::Reader* self = nullptr;
    Recorder child("child ", lines);
    Recorder::Hook onObject;
    Recorder::Hook onArray;
    const auto pushSelf = [&self](json::Stack& stack) { stack.push(self); };
    if (pushes == Pushes::Itself || pushes == Pushes::ItselfInArrays)
        onArray = pushSelf;
    if (pushes == Pushes::Itself)
        onObject = pushSelf;
    else if (pushes == Pushes::ChildInObjects)
        onObject = [&child](json::Stack& stack) { stack.push(&child); };
    else if (pushes == Pushes::TwiceInObjects)
        onObject = [&self](json::Stack& stack) {
            stack.push(self);
            stack.push(self);
        };
    Recorder root("", lines, onObject, onArray);
    self = &root;
    const bool result = parse(&root);
    return lines + (result ? "true\n" : "false\n");
}
