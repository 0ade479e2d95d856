// Tokenises arbitrary text, walks every token and cuts pieces between
// bookmarks chosen from the input, checking that tokens and pieces are the
// source text they claim to be.
#include "sqlparse/scanner.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>

namespace {

void Check(bool ok)
{
    if (!ok)
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    vm20::TNScanner scanner;
    scanner.SetSourceStyle(vm20::sstSQL);
    scanner.KeyWords() << QStringLiteral("select") << QStringLiteral("from") << QStringLiteral("where");
    scanner.SetSource(text.split(QLatin1Char('\n')));

    int count = 0;
    int lastLine = 1;
    int lastEnd = 0;
    for (scanner.FirstToken(); !scanner.EOS(); scanner.NextToken(), ++count) {
        const vm20::TNToken token = scanner.GetToken(0);
        Check(token.TokType != vm20::tokEOS && token.TokType != vm20::tokComment);
        Check(token.Start >= lastEnd && token.End > token.Start);
        Check(token.RealText == text.mid(token.Start, token.End - token.Start));
        Check(token.Text.size() == token.RealText.size() && token.Text == scanner.GetTokStr());
        Check(token.Line >= lastLine && token.Line == scanner.GetTokLine());
        lastLine = token.Line;
        lastEnd = token.End;
    }
    scanner.NextToken();
    Check(scanner.EOS() && scanner.GetTokType() == vm20::tokEOS);

    // Bookmark pairs drawn from the input bytes, past the end included.
    scanner.FirstToken();
    for (size_t i = 0; i + 1 < size && i < 64; i += 2) {
        const vm20::TNScannerBookmark from{int(data[i]) % (count + 2) - 1};
        const vm20::TNScannerBookmark to{int(data[i + 1]) % (count + 2) - 1};
        const QString piece = scanner.ExtractPiece(from, to, (data[i] & 1) != 0);
        if (!piece.isEmpty()) {
            scanner.FirstToken();
            for (int k = 0; k < from.Index; ++k)
                scanner.NextToken();
            Check(text.mid(scanner.GetToken(0).Start, piece.size()) == piece);
        }
    }
    return 0;
}
