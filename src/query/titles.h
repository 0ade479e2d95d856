#pragma once
// The store of every text the query panels show: key=text lines grouped under
// section lines. Hosts translate the panels by replacing these lines.
#include <QString>
#include <QStringList>

#include <functional>

namespace vm20 {

class TQueryTitles
{
public:
    TQueryTitles();   // starts with the default titles

    const QStringList &Lines() const { return FLines; }
    void SetTitles(const QStringList &lines);

    void LoadDefTitles();
    // The text of a key; empty when the store has no such key.
    QString GetTitle(const QString &key) const;
    void SetTitle(const QString &key, const QString &text);

    // Older stores: keys Title0, Title1, ... (or plain lines, one per key) in
    // the order of OldTitleKeys(); empty values keep the current text.
    void LoadOldTitlesFromStrings(const QStringList &lines);
    void MergeDFMTitles(const QStringList &lines);

    static const QStringList &DefaultTitles();
    static const QStringList &OldTitleKeys();

    // Raised once per call that changed any text.
    std::function<void()> OnChange;

private:
    // Stores one text; whether it differed.
    bool Store(const QString &key, const QString &text);
    void Changed();

    QStringList FLines;
};

} // namespace vm20
