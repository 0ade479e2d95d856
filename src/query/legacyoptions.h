#pragma once
// Options of panels stored by older versions as one set of TQPOption names.
// Newer panels split them into appearance options, the SQL syntax and the SQL
// options; a host reading an old form's stream converts them here.
#include "query/sqlsyntax.h"
#include "support/exception.h"

#include <QString>
#include <QStringList>

namespace vm20 {

// The old option names in their order.
const QStringList &OldPanelOptionNames();

// Bits of the appearance options (by their ordinals) that old options set.
inline constexpr unsigned LegacyAppearanceMask = 0x3FF;

struct TLegacyPanelOptions
{
    // Appearance option bits, only among LegacyAppearanceMask; combine as
    // (current & ~LegacyAppearanceMask) | Appearance.
    unsigned Appearance = 0;
    TSQLSyntax SQLSyntax = ssSQL1;
    // To be added to the panel's SQL options.
    TSQLOptions SQLOptions;
};

// Unknown names are ignored; names compare without regard to case.
TLegacyPanelOptions ConvertOldOptions(const QStringList &names);

// Raised for a stored property value of the wrong form.
class EPropertyError : public Exception
{
public:
    using Exception::Exception;
};

// The stored form of the set, "[poFlatButtons, poPopupField]". Anything that
// is not a set of names raises EPropertyError "Invalid property value".
TLegacyPanelOptions ReadOldOptions(const QString &text);

} // namespace vm20
