#pragma once
// Sets the default locale for one test and puts the previous one back.
#include <QLocale>

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
