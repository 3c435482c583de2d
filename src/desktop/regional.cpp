#include "desktop/regional.h"

namespace orvantis {

namespace {

// A format without the text that stands in quotes in it.
QString Unquoted(const QString& format) {
    QString letters;
    bool quoted = false;
    for (const QChar c : format) {
        if (c == u'\'') quoted = !quoted;
        if (!quoted) letters += c;
    }
    return letters;
}

std::string OrderOfDate(const QString& format) {
    for (const QChar c : Unquoted(format)) {
        if (c == u'M') return "0";
        if (c == u'd') return "1";
        if (c == u'y') return "2";
    }
    return "0";
}

}  // namespace

std::string RegionalTextOf(const QLocale& locale, std::string_view key) {
    if (key == "iDate") return OrderOfDate(locale.dateFormat(QLocale::ShortFormat));
    if (key != "iTime") return "";
    // The mark of the half of the day, "AP" or "a", goes with the 12 hour clock.
    const QString format = Unquoted(locale.timeFormat(QLocale::ShortFormat));
    return format.contains(u'a', Qt::CaseInsensitive) ? "0" : "1";
}

std::string LanguageOf(const QLocale& locale) {
    const QString code = QLocale::languageToCode(locale.language(), QLocale::ISO639Part1);
    return code.size() < 2 ? "EN" : code.toUpper().toStdString();
}

}  // namespace orvantis
