#include "query/paramnames.h"

namespace vm20 {

void TParamNameIndex::Add(const QString &name)
{
    ++FCounts[name.toCaseFolded()];
}

void TParamNameIndex::Remove(const QString &name)
{
    const QString key = name.toCaseFolded();
    const auto it = FCounts.find(key);
    if (it == FCounts.end() || --it.value() > 0)
        return;
    FCounts.erase(it);
    // The name is free again on every base it can be read on: the whole name
    // with number 0, and each head before a number in its trailing digits.
    const auto lower = [this](const QString &base, int number) {
        const auto hint = FFreeFrom.find(base);
        if (hint != FFreeFrom.end() && hint.value() > number)
            hint.value() = number;
    };
    lower(key, 0);
    for (qsizetype at = key.size() - 1; at > 0 && key[at].isDigit() && key[at].unicode() < 128; --at) {
        if (key[at] == QLatin1Char('0'))
            continue;
        bool ok = false;
        const int number = QStringView(key).mid(at).toInt(&ok);
        if (ok)
            lower(key.left(at), number);
    }
}

void TParamNameIndex::Clear()
{
    FCounts.clear();
    FFreeFrom.clear();
}

QString TParamNameIndex::FirstFree(const QString &base) const
{
    const QString key = base.toCaseFolded();
    int number = FFreeFrom.value(key, 0);
    while (FCounts.contains(number == 0 ? key : key + QString::number(number)))
        ++number;
    FFreeFrom.insert(key, number);
    return number == 0 ? base : base + QString::number(number);
}

} // namespace vm20
