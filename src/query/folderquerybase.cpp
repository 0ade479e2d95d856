#include "query/folderquerybase.h"

#include "model/errors.h"
#include "query/querytextfile.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vm20 {

const QString TNFolderQueryBase::FileExtension = QStringLiteral(".vmq");

QStringList QueryTextDescription(const QStringList &lines)
{
    QStringList values;
    XReadSLSectionValues(0, lines, QStringLiteral("Description"), values);
    return values;
}

// --- TNFolderQueryItem --------------------------------------------------------------

TNFolderQueryItem::TNFolderQueryItem(const QString &queryName, const QString &fileName)
    : TNQueryItem(queryName), FFileName(fileName)
{
}

TNFolderQueryBase *TNFolderQueryItem::FolderBase() const
{
    auto *base = dynamic_cast<TNFolderQueryBase *>(QueryBase());
    if (!base)
        throw ENQueryBaseError(qbeNoQueryBase, QStringLiteral("Query base is not specified"));
    return base;
}

void TNFolderQueryItem::LoadContent(QStringList &lines)
{
    lines.clear();
    if (!FFileName.isEmpty())
        lines = ReadQueryTextFile(FFileName);
}

void TNFolderQueryItem::SaveContent(const QStringList &lines)
{
    const TNFolderQueryBase *base = FolderBase();
    const QString target = base->FileNameFor(QueryName());
    if (!QDir().mkpath(base->Folder()))
        throw Exception(Format(QStringLiteral("Cannot create folder \"%s\""), {base->Folder()}));
    WriteQueryTextFile(target, lines);
    if (!FFileName.isEmpty() && QFileInfo(FFileName) != QFileInfo(target))
        QFile::remove(FFileName);
    FFileName = target;
    SetDescription(QueryTextDescription(lines));
}

// --- TNFolderQueryBase --------------------------------------------------------------

TNFolderQueryBase::TNFolderQueryBase(QObject *parent)
    : TNQueryBase(parent)
{
}

void TNFolderQueryBase::SetFolder(const QString &value)
{
    if (FFolder == value)
        return;
    FFolder = value;
    if (Active()) {
        Close();
        Open();
    }
}

QString TNFolderQueryBase::FileNameFor(const QString &queryName) const
{
    // Names that would leave the folder or that some file systems refuse.
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|");
    bool valid = !queryName.trimmed().isEmpty() && queryName != QLatin1String(".")
                 && queryName != QLatin1String("..");
    for (QChar c : queryName)
        if (c.unicode() < 32 || forbidden.contains(c))
            valid = false;
    if (!valid)
        throw ENQueryBaseError(qbeInvalidQueryName, QStringLiteral("Invalid query name \"%s\""),
                               {queryName});
    return QDir(FFolder).filePath(queryName + FileExtension);
}

void TNFolderQueryBase::LoadQueryList()
{
    if (FFolder.isEmpty())
        throw ENQueryBaseError(qbeNoFolder, QStringLiteral("Query folder is not specified"));
    const QFileInfoList files = QDir(FFolder).entryInfoList(
        {QLatin1Char('*') + FileExtension}, QDir::Files, QDir::Name | QDir::IgnoreCase);
    for (const QFileInfo &info : files) {
        auto item = std::make_unique<TNFolderQueryItem>(info.completeBaseName(),
                                                        info.absoluteFilePath());
        // A file that cannot be read is still listed; loading it reports why.
        try {
            item->SetDescription(QueryTextDescription(ReadQueryTextFile(info.absoluteFilePath())));
        } catch (const Exception &) {
        }
        AddLoadedItem(std::move(item));
    }
}

TNQueryItem *TNFolderQueryBase::NewQuery()
{
    QString name;
    for (int n = 1;; ++n) {
        name = QStringLiteral("Query%1").arg(n);
        if (IndexByName(name) < 0 && !QFileInfo::exists(FileNameFor(name)))
            break;
    }
    const int index = AddItem(std::make_unique<TNFolderQueryItem>(name));
    return GetQuery(index);
}

void TNFolderQueryBase::EraseQuery(int index)
{
    CheckIndex(index);
    const auto *item = dynamic_cast<const TNFolderQueryItem *>(GetQuery(index));
    if (item && !item->FileName().isEmpty() && QFileInfo::exists(item->FileName())) {
        QFile file(item->FileName());
        if (!file.remove())
            throw Exception(Format(QStringLiteral("Cannot delete file \"%s\". %s"),
                                   {item->FileName(), file.errorString()}));
    }
    DeleteQuery(index);
}

} // namespace vm20
