// The result columns' part of the query text: a [RFields] section followed by
// one [RFieldN] section per column. Older texts name the alias "Name" (before
// 1.4) and refer to fields by full name (before 1.4) or SQL expression
// (before 2.0) instead of by ID.
#include "query/resultfield.h"

#include "model/dbstructure.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

TDSField *ResolveStoredField(const TNCustomDBStructure *model, double version, const QString &entry)
{
    if (!model)
        return nullptr;
    if (version < 1.4)
        return model->FieldByName(2, entry);
    if (version < 2.0)
        return model->FieldByName(3, entry);
    bool ok = false;
    const int id = entry.trimmed().toInt(&ok);
    return ok ? model->FieldByID(id) : nullptr;
}

} // namespace

void TRFieldList::SaveToStrings(QStringList &lines) const
{
    lines << QStringLiteral("[RFields]")
          << QStringLiteral("Count=") + QString::number(Count())
          << QStringLiteral("Version=") + XFloatToStr(CurrentVersion)
          << QStringLiteral("JustSorting=") + XBoolToStr(FJustSorting)
          << QString();
    for (int i = 0; i < Count(); ++i) {
        const TResultField *field = FItems[std::size_t(i)].get();
        QStringList ids;
        for (const TDSField *f : field->DSFields().Fields())
            if (f)
                ids << QString::number(f->ID());
        lines << QStringLiteral("[RField%1]").arg(i + 1)
              << QStringLiteral("Formula=") + field->Formula()
              << QStringLiteral("Fields=") + ids.join(QLatin1Char(','))
              << QStringLiteral("Alias=") + field->Alias()
              << QStringLiteral("Caption=") + field->Caption()
              << QStringLiteral("Sorting=") + QString::number(int(field->Sorting()))
              << QStringLiteral("SortOrder=") + QString::number(field->SortOrder())
              << QString();
    }
}

int TRFieldList::LoadFromStrings(const QStringList &lines, int start)
{
    BeginUpdate();
    FResetPending = true;
    FItems.clear();
    QStringList values;
    int pos = XReadSLSectionValues(start, lines, QStringLiteral("RFields"), values);
    if (pos < 0) {
        EndUpdate();
        return start;
    }
    const int count = XStrToInt(ValueOf(values, QStringLiteral("Count")));
    FJustSorting = XStrToBool(ValueOf(values, QStringLiteral("JustSorting")));
    FVersion = XStrToFloat(ValueOf(values, QStringLiteral("Version")), 1.7);

    const QString aliasKey = FVersion < 1.4 ? QStringLiteral("Name") : QStringLiteral("Alias");
    for (int i = 1; i <= count; ++i) {
        // Sections come in order; a missing one ends the list (a damaged
        // count must not make the reader scan the text again and again).
        const int next = XReadSLSectionValues(pos, lines, QStringLiteral("RField%1").arg(i), values);
        if (next < 0)
            break;
        pos = next;
        TResultField *field = New();
        field->SetFormula(ValueOf(values, QStringLiteral("Formula")));
        field->SetCaption(ValueOf(values, QStringLiteral("Caption")));
        field->SetAlias(ValueOf(values, aliasKey));
        if (HasName(values, QStringLiteral("Sorting"))) {
            const int sorting = XStrToInt(ValueOf(values, QStringLiteral("Sorting")));
            field->SetSorting(sorting >= stNoSort && sorting <= stDescending ? TSortingType(sorting)
                                                                             : stNoSort);
        }
        if (HasName(values, QStringLiteral("SortOrder")))
            field->SetSortOrder(XStrToInt(ValueOf(values, QStringLiteral("SortOrder"))));
        for (const QString &entry : ComposeCommaText(ValueOf(values, QStringLiteral("Fields"))))
            if (TDSField *f = ResolveStoredField(FDBStruct, FVersion, entry))
                field->DSFields().Add(f);
    }
    EndUpdate();
    return pos;
}

} // namespace vm20
