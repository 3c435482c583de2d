// What the user's locale says about dates, times and language, in the program's terms.
#pragma once

#include <QLocale>
#include <string>
#include <string_view>

namespace orvantis {

/// Text of the key "iDate" (0 month first, 1 day first, 2 year first) or "iTime" (0 the 12 hour
/// clock, 1 the 24 hour clock), from the locale's short formats. "" for any other key.
std::string RegionalTextOf(const QLocale& locale, std::string_view key);

/// Abbreviation of the locale's language by ISO 639-1 in capitals; "EN"
/// for a locale without a language.
std::string LanguageOf(const QLocale& locale);

}  // namespace orvantis
