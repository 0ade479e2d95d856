#include "model/valueeditors.h"

#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/messages.h"
#include "support/nstrings.h"

namespace vm20 {

void TDSTextEditor::SetOption(int option, bool on)
{
    if (!on) {
        FOptions &= ~option;
        return;
    }
    FOptions |= option;
    if (option & AutoUpperCase)
        FOptions &= ~AutoLowerCase;
    else if (option & AutoLowerCase)
        FOptions &= ~AutoUpperCase;
}

std::unique_ptr<TDSValueEditor> TDSTextEditor::Clone() const
{
    return std::make_unique<TDSTextEditor>(*this);
}

void TDSListEditor::ClearList()
{
    FItems.clear();
    FValues.clear();
}

std::unique_ptr<TDSValueEditor> TDSListEditor::Clone() const
{
    return std::make_unique<TDSListEditor>(*this);
}

void TDSSQLEditor::SetOpened(bool value)
{
    if (FOpened == value)
        return;
    if (!value) {
        ClearList();
        FOpened = false;
        return;
    }
    if (!FDBStruct)
        throw ENDBStructError(dbseDbInfoNotSpecified, SDBSEDbInfoNotSpecified);
    FDBStruct->CheckDatabaseInfo();
    ClearList();
    try {
        FDBStruct->DatabaseInfo()->RunQuery(ApplyParams(FSQLText), Values(), Items());
    } catch (...) {
        ClearList();
        throw;
    }
    FOpened = true;
}

bool TDSSQLEditor::HasParameter(const QString &name) const
{
    return FSQLText.contains(QLatin1Char(':') + name);
}

QString TDSSQLEditor::ApplyParams(const QString &text) const
{
    QString result = text;
    for (const QString &line : FSQLParams) {
        const QString name = NameOfLine(line);
        if (!name.isEmpty())
            result.replace(QLatin1Char(':') + name, ValueOfLine(line));
    }
    return result;
}

void TDSSQLEditor::Refresh()
{
    SetOpened(false);
    SetOpened(true);
}

std::unique_ptr<TDSValueEditor> TDSSQLEditor::Clone() const
{
    return std::make_unique<TDSSQLEditor>(*this);
}

std::unique_ptr<TDSValueEditor> TDSCustomEditor::Clone() const
{
    return std::make_unique<TDSCustomEditor>(*this);
}

std::unique_ptr<TDSValueEditor> TDSSubQueryEditor::Clone() const
{
    return std::make_unique<TDSSubQueryEditor>(*this);
}

} // namespace vm20
