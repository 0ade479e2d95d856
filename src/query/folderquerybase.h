#pragma once
// A query store that keeps each query as a file of a folder: opening lists
// the folder's query files, saving an item writes its file, erasing deletes
// it. An item is named by its file's base name and described by the file's
// [Description] section.
#include "query/querybase.h"
#include "query/queryitem.h"

namespace vm20 {

class TNFolderQueryBase;

class TNFolderQueryItem : public TNQueryItem
{
public:
    explicit TNFolderQueryItem(const QString &queryName, const QString &fileName = QString());

    // The file the item was read from or last written to; empty for an item
    // that was never saved.
    const QString &FileName() const { return FFileName; }

    // An item never saved has no text yet: it loads as an empty query.
    void LoadContent(QStringList &lines) override;
    // Writes the file named after QueryName (creating the folder when
    // needed); a renamed item's old file goes.
    void SaveContent(const QStringList &lines) override;

private:
    TNFolderQueryBase *FolderBase() const;

    QString FFileName;
};

class TNFolderQueryBase : public TNQueryBase
{
public:
    explicit TNFolderQueryBase(QObject *parent = nullptr);

    static const QString FileExtension;   // ".vmq"

    const QString &Folder() const { return FFolder; }
    // An open store reopens on the new folder.
    void SetFolder(const QString &value);
    // The file of a query of that name; ENQueryBaseError for a name that
    // cannot be a file name.
    QString FileNameFor(const QString &queryName) const;

    // Adds "Query1" (or the first free "QueryN"); its file is written when
    // the item is saved.
    TNQueryItem *NewQuery() override;
    // Deletes the item's file and then the item.
    void EraseQuery(int index) override;

protected:
    void LoadQueryList() override;

private:
    QString FFolder;
};

// The [Description] lines of a query text.
QStringList QueryTextDescription(const QStringList &lines);

} // namespace vm20
