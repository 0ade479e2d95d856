#pragma once
// Helpers shared by the support tests; the locale scope serves the query tests too.
#include "support/exception.h"

#include <QLocale>
#include <gtest/gtest.h>

// Sets the default locale for one test and puts the previous one back.
class ScopedLocale
{
public:
    explicit ScopedLocale(const QLocale &locale) { QLocale::setDefault(locale); }
    ~ScopedLocale() { QLocale::setDefault(FSaved); }
    ScopedLocale(const ScopedLocale &) = delete;
    ScopedLocale &operator=(const ScopedLocale &) = delete;

private:
    QLocale FSaved;
};

// The conversion must fail with exactly this message (it names the bad text).
template <typename F>
void ExpectConvertError(F &&convert, const char *message)
{
    try {
        convert();
        ADD_FAILURE() << "no error, expected: " << message;
    } catch (const vm20::EConvertError &e) {
        EXPECT_EQ(e.Message().toStdString(), message);
    }
}
