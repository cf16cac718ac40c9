#include "ui/views/uitooltip.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QTextLayout>
#include <QToolTip>

namespace ui {

namespace {

constexpr int LONGEST = 800; // characters
constexpr int IN_A_LINE = 70;

bool breaksLines(QChar character) {
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

/// The pieces of `line` that are not too wide for a tip.
QStringList wrapped(const QString& line) {
    const QFont font = QToolTip::font();
    QTextLayout layout(line, font);
    QTextOption anywhere;
    anywhere.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(anywhere);
    layout.beginLayout();
    QStringList pieces;
    for (QTextLine piece = layout.createLine(); piece.isValid(); piece = layout.createLine()) {
        piece.setLineWidth(IN_A_LINE * QFontMetrics(font).averageCharWidth());
        pieces.append(line.mid(piece.textStart(), piece.textLength()));
    }
    layout.endLayout();
    return pieces;
}

/// The toolkit guesses whether a tip is plain text, and would wrap it once more.
QString asMarkup(const QStringList& lines) {
    return QStringLiteral("<p style='white-space:pre'>%1</p>")
        .arg(lines.join(u'\n').toHtmlEscaped());
}

} // namespace

QString tip_text(const QString& text) {
    QString line = text.left(LONGEST);
    if (line.size() < text.size()) {
        if (line.back().isHighSurrogate())
            line.chop(1);
        line.append(QChar(0x2026)); // three dots
    }
    for (QChar& character : line) {
        if (breaksLines(character))
            character = u' ';
    }
    return line;
}

void show_tool_tip(QHelpEvent& event, QWidget& widget, const tool_tip& tip) {
    QStringList lines;
    for (const QString& line : tip.lines)
        lines.append(wrapped(line));
    event.setAccepted(!lines.isEmpty());
    QToolTip::showText(event.globalPos(), lines.isEmpty() ? QString() : asMarkup(lines), &widget,
                       tip.place);
}

} // namespace ui
