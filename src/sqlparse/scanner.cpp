#include "sqlparse/scanner.h"

#include <array>

namespace vm20 {

namespace {

// Character classes of the SQL style for the ASCII range. Characters from
// U+0080 up are blanks when Unicode says so and word characters otherwise,
// so names in any script (and surrogate pairs) stay whole.
enum TCharClass : quint8 {
    ccSpace,    // blanks and control characters
    ccNewline,  // '\n', counted for line numbers
    ccWord,     // letters, '_', '$', '#'
    ccDigit,    // 0-9
    ccQuote,    // ' opens a string literal
    ccMinus,    // - alone, or "--" comment
    ccSlash,    // / alone, or "/*" comment
    ccLess,     // <  <>  <=
    ccGreater,  // >  >=
    ccBang,     // !  !=
    ccSymbol,   // any other punctuation: one character, one token
};

constexpr std::array<quint8, 128> MakeClassTable()
{
    std::array<quint8, 128> t{};
    for (int c = 0; c < 128; ++c) {
        if (c <= 0x20 || c == 0x7F)
            t[c] = ccSpace;
        else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$' || c == '#')
            t[c] = ccWord;
        else if (c >= '0' && c <= '9')
            t[c] = ccDigit;
        else
            t[c] = ccSymbol;
    }
    t['\n'] = ccNewline;
    t['\''] = ccQuote;
    t['-'] = ccMinus;
    t['/'] = ccSlash;
    t['<'] = ccLess;
    t['>'] = ccGreater;
    t['!'] = ccBang;
    return t;
}

constexpr std::array<quint8, 128> CharClass = MakeClassTable();

inline quint8 ClassOf(char16_t c)
{
    if (c < 128)
        return CharClass[c];
    return QChar::isSpace(c) ? ccSpace : ccWord;
}

inline bool IsWordChar(char16_t c)
{
    const quint8 cc = ClassOf(c);
    return cc == ccWord || cc == ccDigit;
}

// Lower case with offsets kept. SQL is mostly ASCII, which is lowered here
// directly; other text goes through Qt. A few special casings change the
// length (U+0130 becomes "i" plus a combining dot); there each character
// keeps the first character of its own lower case.
QString AlignedLower(const QString &text)
{
    QString lower(text.size(), Qt::Uninitialized);
    const char16_t *from = reinterpret_cast<const char16_t *>(text.constData());
    char16_t *to = reinterpret_cast<char16_t *>(lower.data());
    const qsizetype n = text.size();
    qsizetype i = 0;
    for (; i < n && from[i] < 128; ++i)
        to[i] = from[i] >= u'A' && from[i] <= u'Z' ? char16_t(from[i] + 32) : from[i];
    if (i == n)
        return lower;
    lower = text.toLower();
    if (lower.size() == text.size())
        return lower;
    lower = text;
    for (QChar &c : lower)
        if (c.unicode() >= 128 && !c.isSurrogate())
            c = QString(c).toLower().front();
        else
            c = c.toLower();
    return lower;
}

} // namespace

TNScanner::TNScanner() = default;

void TNScanner::SetSourceStyle(TSourceStyle style)
{
    if (FStyle == style)
        return;
    FStyle = style;
    FDirty = true;
}

void TNScanner::SetSource(const QStringList &lines)
{
    FSource = lines;
    FDirty = true;
}

QStringList &TNScanner::Source()
{
    FDirty = true;
    return FSource;
}

QStringList &TNScanner::KeyWords()
{
    FDirty = true;
    return FKeyWords;
}

void TNScanner::FirstToken()
{
    if (FDirty)
        Tokenise();
    FIndex = 0;
}

void TNScanner::NextToken()
{
    if (!EOS())
        ++FIndex;
}

bool TNScanner::IsKeyWord(QStringView lower) const
{
    for (const QString &k : FKeys)
        if (k.size() == lower.size() && lower == k)
            return true;
    return false;
}

// Scans one token starting at a character that is not a blank; returns its
// length and type and advances `line` past the line breaks inside it.
int TNScanner::ScanToken(int pos, int &line, quint8 &type) const
{
    const char16_t *s = reinterpret_cast<const char16_t *>(FText.constData());
    const int n = int(FText.size());
    const char16_t c = s[pos];
    const char16_t next = pos + 1 < n ? s[pos + 1] : u'\0';
    int i = pos + 1;
    switch (ClassOf(c)) {
    case ccWord:
        while (i < n && IsWordChar(s[i]))
            ++i;
        type = tokWord;
        return i - pos;
    case ccDigit:
        while (i < n && ClassOf(s[i]) == ccDigit)
            ++i;
        type = tokNumber;
        // Digits running into letters ("2nd") make one word, not two tokens.
        if (i < n && ClassOf(s[i]) == ccWord) {
            while (i < n && IsWordChar(s[i]))
                ++i;
            type = tokWord;
        }
        return i - pos;
    case ccQuote:
        // A doubled quote inside is part of the literal; an unterminated
        // literal runs to the end of the source.
        type = tokString;
        while (i < n) {
            if (s[i] == u'\'') {
                if (i + 1 < n && s[i + 1] == u'\'') {
                    i += 2;
                    continue;
                }
                ++i;
                break;
            }
            if (s[i] == u'\n')
                ++line;
            ++i;
        }
        return i - pos;
    case ccMinus:
        if (next == u'-') {
            type = tokComment;
            while (i < n && s[i] != u'\n')
                ++i;
            return i - pos;
        }
        break;
    case ccSlash:
        if (next == u'*') {
            type = tokComment;
            i = pos + 2;
            while (i < n && !(s[i] == u'*' && i + 1 < n && s[i + 1] == u'/')) {
                if (s[i] == u'\n')
                    ++line;
                ++i;
            }
            return (i < n ? i + 2 : n) - pos;
        }
        break;
    case ccLess:
        type = tokSymbol;
        return next == u'>' || next == u'=' ? 2 : 1;
    case ccGreater:
    case ccBang:
        type = tokSymbol;
        return next == u'=' ? 2 : 1;
    default:
        break;
    }
    type = tokSymbol;
    return 1;
}

void TNScanner::Tokenise()
{
    FDirty = false;
    FText = FSource.join(QLatin1Char('\n'));
    FLower = AlignedLower(FText);
    FKeys.clear();
    for (const QString &k : FKeyWords)
        FKeys.append(k.toLower());
    FTokens.clear();
    FTokens.reserve(FText.size() / 4 + 1);

    const char16_t *s = reinterpret_cast<const char16_t *>(FText.constData());
    const int n = int(FText.size());
    int line = 1;
    int pos = 0;
    while (pos < n) {
        const quint8 cc = ClassOf(s[pos]);
        if (cc == ccNewline) {
            ++line;
            ++pos;
            continue;
        }
        if (cc == ccSpace) {
            ++pos;
            continue;
        }
        const int startLine = line;
        quint8 type = tokSymbol;
        const int len = ScanToken(pos, line, type);
        if (type != tokComment) {
            if (type == tokWord && IsKeyWord(QStringView(FLower).mid(pos, len)))
                type = tokKeyword;
            FTokens.push_back({pos, len, startLine, type});
        }
        pos += len;
    }
}

QString TNScanner::GetTokStr() const
{
    return TokView().toString();
}

QString TNScanner::GetRealStr() const
{
    return RealView().toString();
}

int TNScanner::GetTokLine() const
{
    if (!EOS())
        return FTokens[FIndex].Line;
    return FTokens.empty() ? 1 : FTokens.back().Line;
}

TNToken TNScanner::GetToken(int offset) const
{
    TNToken token;
    const qint64 index = qint64(FIndex) + offset;
    if (index < 0 || index >= qint64(FTokens.size()))
        return token;
    const TTok &t = FTokens[size_t(index)];
    token.TokType = t.Type;
    token.Text = FLower.mid(t.Start, t.Length);
    token.RealText = FText.mid(t.Start, t.Length);
    token.Line = t.Line;
    token.Start = t.Start;
    token.End = t.Start + t.Length;
    return token;
}

QString TNScanner::ExtractPiece(const TNScannerBookmark &from, const TNScannerBookmark &to,
                                bool includeTo) const
{
    return PieceView(from, to, includeTo).toString();
}

QStringView TNScanner::PieceView(const TNScannerBookmark &from, const TNScannerBookmark &to,
                                 bool includeTo) const
{
    const int count = int(FTokens.size());
    const auto atEnd = [count](int index) { return index < 0 || index >= count; };
    if (atEnd(from.Index))
        return {};
    // The last token that belongs to the piece.
    int last = atEnd(to.Index) ? count - 1 : (includeTo ? to.Index : to.Index - 1);
    if (last < from.Index)
        return {};
    const int start = FTokens[from.Index].Start;
    const int end = FTokens[last].Start + FTokens[last].Length;
    return QStringView(FText).mid(start, end - start);
}

bool IsOneLiteral(QStringView text)
{
    if (text.size() < 2 || text.front() != u'\'')
        return false;
    const qsizetype last = text.size() - 1;
    for (qsizetype i = 1; i <= last; ++i) {
        if (text[i] != u'\'')
            continue;
        if (i == last)
            return true;
        if (text[i + 1] != u'\'')
            return false;   // the literal ends before the text does
        ++i;
    }
    return false;
}

} // namespace vm20
