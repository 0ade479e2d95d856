#pragma once
// Token scanner: cuts a multi-line source into tokens once, then lets the
// caller walk them, peek at neighbours, keep bookmarks and cut source text
// between two bookmarks.
#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

namespace vm20 {

enum TSourceStyle { sstPlain = 0, sstPascal = 1, sstCpp = 2, sstSQL = 3 };

// Token type codes. Callers compare them as numbers, so the values are fixed.
enum : quint8 {
    tokEOS = 0,
    tokWord = 1,     // identifier or SQL word that is not a keyword
    tokKeyword = 2,  // word whose lower-case text is in KeyWords()
    tokSymbol = 3,   // punctuation and operators, "<>" "!=" "<=" ">=" as one token
    tokString = 4,   // single-quoted literal, quotes included
    tokComment = 5,  // "--" to end of line or "/* */"; skipped, never returned
    tokNumber = 7,   // run of decimal digits
};

struct TNToken
{
    quint8 TokType = tokEOS;
    QString Text;      // lower case
    QString RealText;  // as written
    int Line = 0;      // from 1; 0 for the end-of-source token
    int Start = 0;     // offset of the first character in the joined source
    int End = 0;       // offset just past the last character
};

// A token index; an index outside the token array stands for the end of the
// source.
struct TNScannerBookmark
{
    int Index = -1;
};

// Whether `text` is exactly one string literal, quotes included: it opens
// with a quote and the first quote not doubled is its last character. A
// string token fails this when its literal runs unclosed to the end.
bool IsOneLiteral(QStringView text);

class TNScanner
{
public:
    TNScanner();

    void SetSourceStyle(TSourceStyle style);
    TSourceStyle SourceStyle() const { return FStyle; }

    void SetSource(const QStringList &lines);
    // Callers may edit the lines and keywords in place; the next FirstToken
    // tokenises again.
    QStringList &Source();
    QStringList &KeyWords();

    void FirstToken();
    void NextToken();
    bool EOS() const { return FIndex >= int(FTokens.size()); }

    QString GetTokStr() const;   // lower case
    QString GetRealStr() const;  // as written
    quint8 GetTokType() const { return EOS() ? quint8(tokEOS) : FTokens[FIndex].Type; }
    int GetTokLine() const;      // from 1; the last token's line at the end of the source

    // Allocation-free views of the current token's text, valid until the
    // source changes.
    QStringView TokView() const
    {
        return EOS() ? QStringView() : QStringView(FLower).mid(FTokens[FIndex].Start, FTokens[FIndex].Length);
    }
    QStringView RealView() const
    {
        return EOS() ? QStringView() : QStringView(FText).mid(FTokens[FIndex].Start, FTokens[FIndex].Length);
    }

    TNToken GetToken(int offset) const;  // tokEOS token when outside
    TNScannerBookmark GetBookmark() const { return {FIndex}; }
    // Source text from the first character of the token at `from` to the last
    // character of the token before `to` (or of `to` itself with includeTo).
    // A bookmark at the end stands for the end of the source.
    QString ExtractPiece(const TNScannerBookmark &from, const TNScannerBookmark &to,
                         bool includeTo) const;
    // The same piece without a copy, valid until the source changes.
    QStringView PieceView(const TNScannerBookmark &from, const TNScannerBookmark &to,
                          bool includeTo) const;

    int TokenCount() const { return int(FTokens.size()); }

private:
    struct TTok
    {
        int Start;
        int Length;
        int Line;
        quint8 Type;
    };

    void Tokenise();
    int ScanToken(int pos, int &line, quint8 &type) const;
    bool IsKeyWord(QStringView lower) const;

    TSourceStyle FStyle = sstSQL;
    QStringList FSource;
    QStringList FKeyWords;
    QStringList FKeys;  // FKeyWords in lower case, as of the last tokenising
    bool FDirty = true;
    QString FText;   // the source lines joined with "\n"
    QString FLower;  // FText in lower case, offsets aligned with FText
    std::vector<TTok> FTokens;
    int FIndex = 0;
};

} // namespace vm20
