#pragma once
// Reading what the command is given: text files (or standard input), model
// files in either format, the SQL formats file and query files.
#include <QString>
#include <QStringList>

namespace vm20 {
class TNCustomDBStructure;
class TNQuery;
}

namespace vm20::cli {

// The lines of a UTF-8 text file (LF or CR LF). vm20::Exception when the file
// cannot be read.
QStringList ReadTextFile(const QString &path);
// The lines of `path`, or of standard input when `path` is empty.
QStringList ReadInput(const QString &path);

// A model document is XML when its first non-blank character is "<".
bool LooksLikeXml(const QStringList &lines);
// Loads a model file, in the text or the XML format.
void LoadModelFile(TNCustomDBStructure &model, const QString &path);
// The model as the lines of a model file, in the text or the XML format.
QStringList ModelFileLines(const TNCustomDBStructure &model, bool xml);

// Sets the model's SQL formats and model options from name=value lines, keys
// named as the properties (Date, QuoteSymbol1, MultiDB, ...). Blank lines and
// lines starting with "#" or ";" are skipped. An unknown key or a value of the
// wrong form raises vm20::Exception naming the line.
void ApplyFormats(TNCustomDBStructure &model, const QStringList &lines, const QString &source);
void LoadFormatsFile(TNCustomDBStructure &model, const QString &path);

// Sets up `query` on `model` as the command uses it: active, options taken
// from the query text, titles not part of it.
void PrepareQuery(TNQuery &query, TNCustomDBStructure &model);
// Loads a query file, or standard input when `path` is empty. A file without
// any text is an error: it holds no query, not an empty one.
void LoadQueryInput(TNQuery &query, const QString &path);

} // namespace vm20::cli

namespace vm20::cli {

class TCommandOptions;

// The flags every command on a model file has: --model and --formats.
void AddModelOptions(TCommandOptions &options);
void LoadModelOptions(TNCustomDBStructure &model, const TCommandOptions &options);

// --allow-incomplete, and the check it turns off: a query the model cannot
// resolve in full raises EIncompleteQuery listing each part; with the flag the
// list goes to standard error as warnings and the command goes on.
void AddIncompleteOption(TCommandOptions &options);
void CheckComplete(const TNQuery &query, const TCommandOptions &options);

} // namespace vm20::cli
