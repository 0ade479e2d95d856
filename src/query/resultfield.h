#pragma once
// The columns of the SELECT list. A column combines one or more model fields
// through a formula ("@1" for the first field, "@2" for the second, ...) and
// carries a caption for the user, an alias for SQL and a sort setting.
#include "model/dbstructure.h"
#include "model/dsfield.h"
#include "query/modelwatch.h"
#include "query/resultfieldobserver.h"
#include "support/observerlist.h"

#include <QChar>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

namespace vm20 {

class TNQuery;
class TRFieldList;

enum TSortingType { stNoSort, stAscending, stDescending };

class TResultField
{
public:
    explicit TResultField(TRFieldList *list);
    TResultField(const TResultField &) = delete;
    TResultField &operator=(const TResultField &) = delete;

    TDSFieldList &DSFields() { return FDSFields; }
    const TDSFieldList &DSFields() const { return FDSFields; }
    TRFieldList *RFList() const { return FRFList; }
    const QString &Caption() const { return FCaption; }
    void SetCaption(const QString &value);
    const QString &Alias() const { return FAlias; }
    void SetAlias(const QString &value);
    const QString &Formula() const { return FFormula; }
    void SetFormula(const QString &value);
    TSortingType Sorting() const { return FSorting; }
    void SetSorting(TSortingType value);
    int Number() const { return FNumber; }
    void SetNumber(int value) { FNumber = value; }
    int SortOrder() const { return FSortOrder; }
    void SetSortOrder(int value);
    const QVariant &OleObject() const { return FOleObject; }
    void SetOleObject(const QVariant &value) { FOleObject = value; }

    QString GetSQLExpr() const;
    QString GetNormalSQLExpr() const;
    QString GetSQLAlias() const;
    QString GetSelectExpr() const;
    QString GetOrderName() const;
    bool GetAgregate() const;
    void GenerateAlias();
    QChar GetQuoteSymbol(int which) const;

    void Assign(const TResultField &source);

private:
    friend class TRFieldList;
    void Changed();
    QString ExpandFormula(bool normal) const;
    TNCustomDBStructure *DBStruct() const;

    TDSFieldList FDSFields;
    TRFieldList *FRFList;
    QString FCaption;
    QString FAlias;
    QString FFormula;
    TSortingType FSorting = stNoSort;
    int FNumber = 0;
    int FSortOrder = 0;
    QVariant FOleObject;
};

class TRFieldList
{
public:
    explicit TRFieldList(TNCustomDBStructure *dbStruct = nullptr);
    ~TRFieldList();
    TRFieldList(const TRFieldList &) = delete;
    TRFieldList &operator=(const TRFieldList &) = delete;

    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    // The list follows the model: a column that uses a model field about to
    // be freed is removed (its formula could not be computed any more).
    void SetDBStruct(TNCustomDBStructure *value);
    TNQuery *QueryPanel() const { return FQueryPanel; }
    void SetQueryPanel(TNQuery *value) { FQueryPanel = value; }
    bool QuoteAliases() const { return FQuoteAliases; }
    void SetQuoteAliases(bool value) { FQuoteAliases = value; }
    double Version() const { return FVersion; }
    void SetVersion(double value) { FVersion = value; }
    const QVariant &OleObject() const { return FOleObject; }
    void SetOleObject(const QVariant &value) { FOleObject = value; }
    bool AsciiAliases() const { return FAsciiAliases; }
    void SetAsciiAliases(bool value) { FAsciiAliases = value; }
    bool JustSorting() const { return FJustSorting; }
    void SetJustSorting(bool value);
    bool UseAliases() const { return FUseAliases; }
    void SetUseAliases(bool value) { FUseAliases = value; }
    int Updating() const { return FUpdating; }

    int Count() const { return int(FItems.size()); }
    TResultField *GetRField(int index) const;   // EListError outside the list
    const std::vector<std::unique_ptr<TResultField>> &Items() const { return FItems; }
    int IndexOf(const TResultField *field) const;

    std::unique_ptr<TResultField> CreateRField();
    // An empty column appended to the list.
    TResultField *New();
    // A column over `fields`; an empty formula over fields is "@1".
    TResultField *Add(const QString &caption, const std::vector<TDSField *> &fields,
                      const QString &formula);
    TResultField *Insert(int index, const QString &caption, const std::vector<TDSField *> &fields,
                         const QString &formula);
    // A column from an expression naming model fields by their full names
    // ("Orders.Amount") or SQL expressions; an empty caption is derived.
    TResultField *AddByExpression(const QString &caption, const QString &expression,
                                  TSortingType sorting, int sortOrder);
    TResultField *InsertByExpression(int index, const QString &caption, const QString &expression,
                                     TSortingType sorting, int sortOrder);
    // The same from SQL text: fields are found by their SQL expressions first.
    TResultField *AddBySQLExpr(const QString &sqlExpr, const QString &caption,
                               TSortingType sorting, int sortOrder);
    TResultField *InsertBySQLExpr(int index, const QString &sqlExpr, const QString &caption,
                                  TSortingType sorting, int sortOrder);
    void Delete(int index);
    void Move(int from, int to);
    void Clear();

    bool CheckUniqAlias(const QString &alias, const TResultField *except = nullptr) const;
    bool CheckUniqCaption(const QString &caption, const TResultField *except = nullptr) const;
    QString GetUniqAlias(const QString &base) const;
    QString GetUniqCaption(const QString &base) const;
    void GenerateNumbers();
    void RegenerateAliases();
    int GetSortCount() const;
    QString GetCaption(int index) const;

    // Listeners are told in the order they were added (resultfieldobserver.h).
    void AddObserver(TRFieldListObserver *observer);
    void RemoveObserver(TRFieldListObserver *observer);
    // Batches changes: listeners get one Reset at the outermost EndUpdate.
    void BeginUpdate() { ++FUpdating; }
    void EndUpdate();
    // Tells the listeners (FieldChanged, or Reset for no column) and raises
    // OnChange; inside an update only marks the batch for its Reset.
    void RFieldChanged(TResultField *field);
    std::function<void(TRFieldList *)> OnChange;

    void Assign(const TRFieldList &source);

    // Appends the list's sections ([RFields], [RField1], ...) to `lines`.
    void SaveToStrings(QStringList &lines) const;
    // Replaces the columns by those of the sections found from line `start`
    // on; returns the line after the last section read (`start` when there
    // is no [RFields] section).
    int LoadFromStrings(const QStringList &lines, int start = 0);

    static constexpr double CurrentVersion = 3.6;

    // A column for a model editor's "add": the model's first field usable in
    // results, formula "@1", that field's caption; a bare column when the
    // model has none. Appended like New.
    TResultField *NewResultField();
    // Numbers the sorted columns 1, 2, ... in list order; unsorted get 0.
    void RefreshSortOrder();

private:
    // A column not yet in the list (its own notifications go nowhere).
    std::unique_ptr<TResultField> MakeField(const QString &caption,
                                            const std::vector<TDSField *> &fields,
                                            const QString &formula);
    TResultField *InsertMade(int index, std::unique_ptr<TResultField> field);
    template <class F>
    void Signal(F &&call)
    {
        if (FUpdating > 0) {
            FResetPending = true;
            return;
        }
        FObservers.Notify(call);
        if (OnChange)
            OnChange(this);
    }
    void DropModelFields(const TModelChange &entity);
    TResultField *InsertExpression(int index, const QString &caption, const QString &expression,
                                   TSortingType sorting, int sortOrder, bool sqlFirst);

    QPointer<TNCustomDBStructure> FDBStruct;
    TNQuery *FQueryPanel = nullptr;
    bool FQuoteAliases = false;
    double FVersion = CurrentVersion;
    QVariant FOleObject;
    bool FAsciiAliases = false;
    bool FJustSorting = false;
    bool FUseAliases = true;
    int FUpdating = 0;
    bool FResetPending = false;
    std::vector<std::unique_ptr<TResultField>> FItems;
    TObserverList<TRFieldListObserver> FObservers;
    // Last: it leaves the model before the columns go.
    TModelWatch FModelWatch;
};

} // namespace vm20
