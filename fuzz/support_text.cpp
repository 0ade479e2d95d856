// Feeds arbitrary text to the helpers that read text from files: comma text,
// sections, name=value lines, number and date parsers and message formatting.
// The first byte picks the reader; a line break splits text and pattern.
#include "support/dattime.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <cstdint>
#include <cstdlib>

using namespace vm20;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    switch (data[0] % 6) {
    case 0: {
        const QStringList items = ComposeCommaText(text);
        if (ComposeCommaText(ListToCommaText(items)) != items)
            std::abort();   // writing what was read must read back the same
        break;
    }
    case 1: {
        const QStringList lines = text.split(QLatin1Char('\n'));
        QStringList values;
        int pos = 0;
        for (const QString &line : lines) {
            QString name;
            if (IsSectionHeader(line, &name) && pos >= 0)
                pos = XReadSLSectionValues(pos, lines, name, values);
        }
        const TSectionIndex index(lines);
        for (const QString &name : index.SectionNames())
            ValueOf(index.Values(name), name);
        break;
    }
    case 2: {
        const qsizetype cut = text.indexOf(QLatin1Char('\n'));
        TDateTime value = 0;
        if (TryStrToDateTimeByFormat(text.left(cut < 0 ? 0 : cut), text.mid(cut + 1), value))
            FormatDateTime(text.mid(cut + 1), value);
        FormatDateTime(text, 44928.627);
        break;
    }
    case 3:
        XStrToFloat(text);
        XStrToCurr(text);
        XStrToInt(text);
        XStrToBool(text);
        XFloatToStr(XStrToFloat(text));
        try {
            StrToCurr(text);
        } catch (const EConvertError &) {
        }
        break;
    case 4:
        try {
            StrToDateTime(text);
        } catch (const EConvertError &) {
        }
        try {
            DateTimeToStr(VmStrToDateTime(text));
        } catch (const EConvertError &) {
        }
        break;
    default:
        Format(text, {text, 1});
        DequotedStr(text);
        IsValidIdent(text);
        break;
    }
    return 0;
}
