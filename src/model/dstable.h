#pragma once
// A table of the data model: its physical name, alias and caption, the links
// that touch it, and the SQL texts the generator takes from it.
#include <QString>

#include <vector>

namespace vm20 {

class TDSLink;
class TNCustomDBStructure;

class TDSTable
{
public:
    explicit TDSTable(TNCustomDBStructure *dbStruct = nullptr);
    TDSTable(const TDSTable &) = delete;
    TDSTable &operator=(const TDSTable &) = delete;

    const QString &DatabaseName() const { return FDatabaseName; }
    void SetDatabaseName(const QString &value)
    {
        if (FDatabaseName == value)
            return;
        FDatabaseName = value;
        NotifyModel();
    }
    // Also gives the table its name as alias while the alias is empty.
    const QString &TableName() const { return FTableName; }
    void SetTableName(const QString &value);
    const QString &DisplayName() const { return FDisplayName; }
    void SetDisplayName(const QString &value)
    {
        if (FDisplayName == value)
            return;
        FDisplayName = value;
        NotifyModel();
    }
    // An alias never contains a blank: blanks are stored as "_".
    const QString &TableAlias() const { return FTableAlias; }
    void SetTableAlias(const QString &value);
    const QString &LinksStr() const { return FLinksStr; }
    void SetLinksStr(const QString &value) { FLinksStr = value; }
    const QString &TableHints() const { return FTableHints; }
    void SetTableHints(const QString &value)
    {
        if (FTableHints == value)
            return;
        FTableHints = value;
        NotifyModel();
    }
    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    void SetDBStruct(TNCustomDBStructure *value) { FDBStruct = value; }
    bool Quoted() const { return FQuoted; }
    void SetQuoted(bool value)
    {
        if (FQuoted == value)
            return;
        FQuoted = value;
        NotifyModel();
    }
    int DesignLeft() const { return FDesignLeft; }
    void SetDesignLeft(int value) { FDesignLeft = value; }
    int DesignTop() const { return FDesignTop; }
    void SetDesignTop(int value) { FDesignTop = value; }
    int DesignWidth() const { return FDesignWidth; }
    void SetDesignWidth(int value) { FDesignWidth = value; }
    int DesignHeight() const { return FDesignHeight; }
    void SetDesignHeight(int value) { FDesignHeight = value; }

    // Derived SQL texts (quote symbols and qualification from the model's
    // options; a table outside a model uses the default options).
    QString MainExpr() const;
    QString FromExpr() const;
    QString WhereExpr() const;
    // The alias as SQL names it: quoted when it is not one plain name.
    QString SQLAlias() const;
    QString CompoundName() const;
    QString FullName() const;
    // "left,top,width,height"; assigning parses leniently (missing parts 0).
    QString DesignPositions() const;
    void SetDesignPositions(const QString &value);

    // The links touching this table, in the order they were attached; not owned.
    int LinkCount() const { return int(FLinks.size()); }
    TDSLink *GetLink(int index) const;     // EListError outside the list
    const std::vector<TDSLink *> &Links() const { return FLinks; }
    void AddLinkRef(TDSLink *link);
    void DelLink(int index);               // removes the reference only
    void RemoveLinkRef(TDSLink *link);     // every reference to `link`
    TDSLink *LinkByTable(const TDSTable *table) const;
    TDSLink *LinkByTableAlias(const QString &alias) const;

private:
    // Tells the model's listeners that this entity changed.
    void NotifyModel();
    void LinksChanged();

    QString FDatabaseName;
    QString FTableName;
    QString FDisplayName;
    QString FTableAlias;
    QString FLinksStr;
    std::vector<TDSLink *> FLinks;
    QString FTableHints;
    TNCustomDBStructure *FDBStruct = nullptr;
    bool FQuoted = false;
    int FDesignLeft = 0;
    int FDesignTop = 0;
    int FDesignWidth = 0;
    int FDesignHeight = 0;
};

} // namespace vm20
