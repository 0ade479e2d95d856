#include "query/titles.h"

#include "support/nstrings.h"

namespace vm20 {

TQueryTitles::TQueryTitles()
    : FLines(DefaultTitles())
{
}

void TQueryTitles::SetTitles(const QStringList &lines)
{
    if (FLines == lines)
        return;
    FLines = lines;
    Changed();
}

void TQueryTitles::LoadDefTitles()
{
    SetTitles(DefaultTitles());
}

QString TQueryTitles::GetTitle(const QString &key) const
{
    return ValueOf(FLines, key);
}

void TQueryTitles::SetTitle(const QString &key, const QString &text)
{
    if (Store(key, text))
        Changed();
}

void TQueryTitles::LoadOldTitlesFromStrings(const QStringList &lines)
{
    const QStringList &keys = OldTitleKeys();
    bool changed = false;
    for (int i = 0; i < keys.size(); ++i) {
        const QString value = ValueOf(lines, QStringLiteral("Title%1").arg(i)).trimmed();
        if (!value.isEmpty())
            changed |= Store(keys[i], value);
    }
    if (changed)
        Changed();
}

void TQueryTitles::MergeDFMTitles(const QStringList &lines)
{
    const QStringList &keys = OldTitleKeys();
    bool changed = false;
    for (int i = 0; i < keys.size() && i < lines.size(); ++i) {
        const QString value = lines[i].trimmed();
        if (!value.isEmpty())
            changed |= Store(keys[i], value);
    }
    if (changed)
        Changed();
}

bool TQueryTitles::Store(const QString &key, const QString &text)
{
    const qsizetype count = FLines.size();
    const QString before = ValueOf(FLines, key);
    SetValueOf(FLines, key, text);
    return FLines.size() != count || before != text;
}

void TQueryTitles::Changed()
{
    if (OnChange)
        OnChange();
}

const QStringList &TQueryTitles::DefaultTitles()
{
    static const QStringList titles = {
        QStringLiteral("[Query Panel]"),
        QStringLiteral("ttlFilter=Choose records where @ of the following apply"),
        QStringLiteral("ttlBracket=@ of the following apply"),
        QStringLiteral("ttlAll=all"),
        QStringLiteral("ttlAny=any"),
        QStringLiteral("ttlNone=none"),
        QStringLiteral("ttlNotAll=not all"),
        QStringLiteral("ttlAddCond=Add new &condition"),
        QStringLiteral("ttlAddBracket=Open new &bracket"),
        QStringLiteral("ttlAfterCurrent=after current"),
        QStringLiteral("ttlInsideCurrent=inside current"),
        QStringLiteral("ttlDelRow=&Delete row"),
        QStringLiteral("ttlEnableDisable=&Enable/Disable row"),
        QStringLiteral("ttlClickToAdd=Click here to add new condition"),
        QStringLiteral("ttlSubQueryCaption=Sub-query"),
        QStringLiteral("ttlResultField=Result field"),
        QStringLiteral("ttlAnd=and"),
        QStringLiteral("ttlOr=or"),
        QStringLiteral("ttlConstant=Constant value"),
        QStringLiteral("ttlParameter=Parameter"),
        QStringLiteral("ttlCustomCond=Add custom condition"),
        QStringLiteral("ttlTrue=True"),
        QStringLiteral("ttlFalse=False"),
        QStringLiteral(" "),
        QStringLiteral("[Result Fields Editor]"),
        QStringLiteral("ttlRFETitle=Result Fields Editor"),
        QStringLiteral("ttlFields=&Available fields"),
        QStringLiteral("ttlResFields=Result fields"),
        QStringLiteral("ttlMakeFldHint=Create result field"),
        QStringLiteral("ttlDelFldHint=Delete result field"),
        QStringLiteral("ttlNewFldHint=New result field"),
        QStringLiteral("ttlAddRFldHint=Add to result field"),
        QStringLiteral("ttlSubRFldHint=Subtract from result field"),
        QStringLiteral("ttlMulRFldHint=Multiply by result field"),
        QStringLiteral("ttlDivRFldHint=Divide by result field"),
        QStringLiteral("ttlSortRFldHint=Sort result field"),
        QStringLiteral("ttlNotSorted=Not Sorted"),
        QStringLiteral("ttlAscending=Ascending"),
        QStringLiteral("ttlDescending=Descending"),
        QStringLiteral("ttlSortCaption=Sorted fields"),
        QStringLiteral("ttlSortingColName=Sorting type"),
        QStringLiteral("ttlFieldNmColName=Field Name"),
        QStringLiteral("ttlFieldExprColName=Expression"),
        QStringLiteral("ttlMgsDeleteField=Delete Field \"%s\"?"),
        QStringLiteral("ttlOkBtnCaption=OK"),
        QStringLiteral("ttlCancelBtnCaption=Cancel"),
        QStringLiteral("ttlAsIs=as is"),
        QStringLiteral("ttlJustSorting=just sorting"),
        QStringLiteral("ttlAddBtnCaption=&Add"),
        QStringLiteral("ttlAddBtnHint=Add result field"),
        QStringLiteral("ttlHelpBtnCaption=&Help"),
        QStringLiteral("ttlSUMCaption=Sum"),
        QStringLiteral("ttlCOUNTCaption=Count"),
        QStringLiteral("ttlMINCaption=Minimum"),
        QStringLiteral("ttlMAXCaption=Maximum"),
        QStringLiteral("ttlAVERAGECaption=Average"),
        QStringLiteral("ttlLISTCaption=List"),
        QStringLiteral("ttlCOUNTDISTINCTCaption=Distinct count"),
    };
    return titles;
}

const QStringList &TQueryTitles::OldTitleKeys()
{
    static const QStringList keys = {
        QStringLiteral("ttlFilter"),       QStringLiteral("ttlBracket"),
        QStringLiteral("ttlAll"),          QStringLiteral("ttlAny"),
        QStringLiteral("ttlNone"),         QStringLiteral("ttlNotAll"),
        QStringLiteral("ttlAddBracket"),   QStringLiteral("ttlAddCond"),
        QStringLiteral("ttlDelRow"),       QStringLiteral("ttlFields"),
        QStringLiteral("ttlResFields"),    QStringLiteral("ttlMakeFldHint"),
        QStringLiteral("ttlDelFldHint"),   QStringLiteral("ttlSortTypeHint"),
        QStringLiteral("ttlNotSorted"),    QStringLiteral("ttlAscending"),
        QStringLiteral("ttlDescending"),   QStringLiteral("ttlSortCaption"),
        QStringLiteral("ttlRename"),       QStringLiteral("ttlDelete"),
        QStringLiteral("ttlWithoutGroup"), QStringLiteral("ttlAllResFieds"),
    };
    return keys;
}

} // namespace vm20
