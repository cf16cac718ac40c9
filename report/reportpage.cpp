#include "report/reportpage.h"

#include <QCryptographicHash>
#include <QFile>
#include <QString>

// Outside every namespace, as the macro asks.
static void initResources() {
    Q_INIT_RESOURCE(page);
}

namespace report {

namespace {

QByteArray contents(const char* name) {
    QFile file(QStringLiteral(":/page/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What a policy knows a script or style by: that it has exactly this text.
QByteArray source(const QByteArray& text) {
    return "'sha256-" + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toBase64() + "'";
}

QByteArray policy(const QByteArray& script, const QByteArray& style) {
    return R"(<meta http-equiv="Content-Security-Policy" content="default-src 'none'; )"
           "script-src " +
           source(script) + "; style-src " + source(style) +
           R"(; img-src data:; base-uri 'none'; form-action 'none'">)";
}

QByteArray replaced(QByteArray text, QByteArrayView mark, const QByteArray& by) {
    return text.replace(mark, by);
}

} // namespace

page explorer_page() {
    initResources();
    const QByteArray script = contents("explorer.js");
    const QByteArray style = contents("page.css");
    const QByteArray html = contents("page.html");
    const qsizetype data = html.indexOf("<!--data-->");
    const QByteArray before = replaced(html.first(data), "<!--policy-->", policy(script, style));
    return {replaced(before, "<!--style-->", "<style>" + style + "</style>") +
                R"(<script type="application/json" id="data">)",
            "</script>\n" + replaced(html.sliced(data), "<!--data-->\n<!--script-->",
                                     R"(<script type="module">)" + script + "</script>")};
}

QByteArray page_data(QByteArray json) {
    return json.replace('<', R"(\u003c)");
}

} // namespace report
