#pragma once
// Base of the labels that drop a list box under themselves, hosted by the
// label's top-level window or, with UseForm, by a window of its own that may
// reach beyond the form.
#include "ui/dropdownlist.h"

#include <QPointer>

class QListWidget;

namespace vm20 {

class TDropDownCustomListBox : public TDropDownList
{
    Q_OBJECT
    Q_PROPERTY(bool UseForm READ UseForm WRITE SetUseForm)

public:
    explicit TDropDownCustomListBox(QWidget *parent = nullptr);
    ~TDropDownCustomListBox() override;

    // Takes effect at the next drop-down.
    bool UseForm() const { return FUseForm; }
    void SetUseForm(bool value);
    // The window that hosts the list (nullptr before the first drop-down).
    QWidget *Desktop() const { return FDesktop.data(); }
    // The list box, once made.
    virtual QListWidget *ListBox() const = 0;
    // A point of the label's parent in the host's coordinates.
    QPoint ClientToDesktop(const QPoint &p) const;

protected:
    virtual void CreateDesktop();
    // The widest of minWidth and the texts, plus room for the frame and bar.
    virtual int GetLBWidth(int minWidth, const QStringList &strings) const;
    virtual void SetListSorted(bool value);
    virtual int GetListItemHeight() const;

    void ShowControl() override;
    void HideControl() override;
    bool IsEditMode() const override;
    void BiDiModeChanged() override;

    // Places and shows the filled list.
    void PlaceList();
    // The parent the list box should have: the host form or the window.
    QWidget *ListParent() const;
    void UpdateHint(const QPoint &pos);

    int FPrevMouseMoveIndex = -1;

private:
    QPointer<QWidget> FDesktop;
    QPointer<QWidget> FForm; // owned when UseForm made it
    bool FUseForm = false;
};

} // namespace vm20
