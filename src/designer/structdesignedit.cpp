// Editing on the diagram: deleting tables and links, drawing a new link in
// two stages, and the context menus and keys that start these.
#include "designer/designarea.h"
#include "designer/structdesignpanel.h"
#include "model/dbstructure.h"
#include "model/messages.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>

namespace vm20 {

bool TNStructDesignPanel::Confirm(const QString &question)
{
    if (OnConfirm)
        return OnConfirm(question);
    return QMessageBox::question(this, QApplication::applicationDisplayName(), question,
                                 QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

void TNStructDesignPanel::AddTablesDlg()
{
    if (TablesDialog)
        TablesDialog(this);
}

void TNStructDesignPanel::DeleteActiveTable()
{
    if (FActiveTable && Confirm(SDeleteTable))
        DeleteTable(FActiveTable);
}

void TNStructDesignPanel::DeleteTable(TTableRep *rep)
{
    if (!rep || !FStruct)
        return;
    const int index = FStruct->IndexOfTable(rep->Table());
    if (index >= 0)
        FStruct->DelTable(index);   // its links go with it; the change rebuilds
}

void TNStructDesignPanel::DeleteAllTableLinks(TTableRep *rep)
{
    if (!rep || !FStruct)
        return;
    const TDSTable *table = rep->Table();
    FStruct->BeginUpdate();
    for (int i = FStruct->GetLinkCount() - 1; i >= 0; --i)
        if (FStruct->GetLink(i)->ContainsTable(table))
            FStruct->DelLink(i);
    FStruct->EndUpdate();
    FStruct->Changed();
}

void TNStructDesignPanel::DeleteActiveLink()
{
    if (FActiveLink && Confirm(SDeleteLink))
        DeleteLink(FActiveLink);
}

void TNStructDesignPanel::DeleteLink(TLinkRep *rep)
{
    if (!rep || !FStruct)
        return;
    const int index = FStruct->IndexOfLink(rep->Link());
    if (index >= 0)
        FStruct->DelLink(index);
}

void TNStructDesignPanel::EditActiveLink()
{
    if (FActiveLink && LinkEditor)
        LinkEditor(this, FActiveLink->Link());
}

// --- adding a link -----------------------------------------------------------------

int TNStructDesignPanel::AddLinkStage() const
{
    if (!FAddingLink)
        return 0;
    return FLinkTable1 ? 2 : 1;
}

void TNStructDesignPanel::StartAddLink()
{
    if (!FActive || FAddingLink)
        return;
    DoAddLinkStart();
    FAddingLink = true;
    FLinkTable1 = nullptr;
    FLinkField1.clear();
    FNewLink = std::make_unique<TLinkRep>(this, nullptr, nullptr, nullptr);
    SetLinkHandlers(true);
    SetHint(QStringLiteral("AddLinkStage1Hint"));
    setFocus();
}

void TNStructDesignPanel::SetLinkHandlers(bool adding)
{
    for (const auto &rep : FTableReps) {
        TTableRepListBox *list = rep->ListBox();
        TTableRep *table = rep.get();
        if (!adding) {
            list->unsetCursor();
            list->OnSelect = nullptr;
            list->OnMouseMove = nullptr;
            list->OnExit = nullptr;
            continue;
        }
        list->setCursor(Qt::PointingHandCursor);
        list->OnSelect = [this, table](int index) {
            const QString name = table->ListBox()->Items().value(index);
            if (AddLinkStage() == 1)
                LinkField1Selected(table, name);
            else
                LinkField2Selected(table, name);
        };
        list->OnMouseMove = [this, table](QPoint pos) { MouseMoveOverListBox(table, pos); };
        list->OnExit = [this, table] { AddLinkLBExit(table); };
    }
}

void TNStructDesignPanel::LinkField1Selected(TTableRep *rep, const QString &fieldName)
{
    if (!FAddingLink || !rep)
        return;
    FLinkTable1 = rep;
    FLinkField1 = fieldName;
    FNewLink->SetTableRep1(rep);
    TLinkNodes &nodes = FNewLink->Nodes1();
    nodes.Clear();
    TLinkNode *node = nodes.Add(fieldName);
    // Until the second table is known the line leaves on the right.
    node->X = rep->geometry().left() + rep->width() + 1;
    node->Direction = 1;
    node->Y = rep->GetFieldYPosition(fieldName);
    FNewLink->NodesChanged();
    SetHint(QStringLiteral("AddLinkStage2Hint"));
}

void TNStructDesignPanel::LinkField2Selected(TTableRep *rep, const QString &fieldName)
{
    if (AddLinkStage() != 2 || !rep || !FStruct)
        return;
    // A second pick in the first table chooses its field again.
    if (rep == FLinkTable1) {
        LinkField1Selected(rep, fieldName);
        return;
    }
    // The link's setters already tell the model's listeners, and a model change
    // cancels a link being added: finish the stage before building the link.
    TDSTable *table1 = FLinkTable1->Table();
    const QString field1 = FLinkField1;
    FinishAddLink();
    auto link = std::make_unique<TDSLink>(FStruct);
    link->SetTable1(table1);
    link->SetTable2(rep->Table());
    link->SetFields1({field1});
    link->SetFields2({fieldName});
    TDSLink *added = link.get();
    FStruct->AddLinkByRef(std::move(link));   // the change notification draws it
    SetActiveLink(LinkRep(added));
}

void TNStructDesignPanel::FinishAddLink()
{
    if (!FAddingLink)
        return;
    SetLinkHandlers(false);
    const QRegion pending = FNewLink ? FNewLink->Region() : QRegion();
    FNewLink.reset();
    FLinkTable1 = nullptr;
    FLinkField1.clear();
    FAddingLink = false;
    InvalidateLinks(pending);
    SetHint(QStringLiteral("IdleHint"));
    DoAddLinkFinish();
}

void TNStructDesignPanel::CancelAddLink()
{
    FinishAddLink();
}

void TNStructDesignPanel::MouseMoveOverListBox(TTableRep *rep, QPoint listPos)
{
    if (AddLinkStage() == 2)
        FNewLink->MoveNode2ToMouseCursor(rep->ListBox()->mapTo(FDesignArea->Canvas(), listPos));
}

void TNStructDesignPanel::AddLinkLBExit(TTableRep *)
{
    SetHint(AddLinkStage() == 2 ? QStringLiteral("AddLinkStage2Hint")
                                : QStringLiteral("AddLinkStage1Hint"));
}

// --- mouse, keys and menus -------------------------------------------------------------

void TNStructDesignPanel::AreaMousePress(QPoint pos, Qt::MouseButton button)
{
    setFocus();
    if (FAddingLink) {
        // A click beside the tables gives up the new link.
        if (button == Qt::LeftButton)
            CancelAddLink();
        return;
    }
    if (TLinkRep *link = FLinkReps.IsOverSomeLink(pos.x(), pos.y()))
        SetActiveLink(link);
    else if (button == Qt::LeftButton) {
        SetActiveTable(nullptr);
        SetActiveLink(nullptr);
    }
}

void TNStructDesignPanel::AreaMouseMove(QPoint pos)
{
    if (FAddingLink) {
        if (AddLinkStage() == 2)
            FNewLink->MoveNode2ToMouseCursor(pos);
        return;
    }
    if (FLinkReps.IsOverSomeLink(pos.x(), pos.y()))
        SetHint(QStringLiteral("SelectLinkHint"));
    else
        SetHint(QStringLiteral("IdleHint"));
}

void TNStructDesignPanel::TableHovered(TTableRep *)
{
    if (!FAddingLink)
        SetHint(QStringLiteral("SelectTableHint"));
}

void TNStructDesignPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && FAddingLink) {
        CancelAddLink();
        return;
    }
    if (event->key() == Qt::Key_Escape && FFullScreenMode) {
        SetFullScreenMode(false);
        return;
    }
    if (event->key() == Qt::Key_Delete) {
        if (FActiveLink)
            DeleteActiveLink();
        else if (FActiveTable)
            DeleteActiveTable();
        return;
    }
    QFrame::keyPressEvent(event);
}

QAction *TNStructDesignPanel::RunMenu(QMenu *menu, QPoint globalPos)
{
    if (MenuHook)
        return MenuHook(menu, globalPos);
    return menu->exec(globalPos);
}

void TNStructDesignPanel::ShowTableMenu(TTableRep *rep, QPoint globalPos)
{
    if (FAddingLink)
        return;
    SetActiveTable(rep);
    QMenu menu(this);
    QAction *addLink = menu.addAction(QStringLiteral("Add link"));
    QAction *deleteTable = menu.addAction(QStringLiteral("Delete table"));
    QAction *deleteLinks = menu.addAction(QStringLiteral("Delete all links of table"));
    deleteLinks->setEnabled(rep->Table()->LinkCount() > 0);
    menu.addSeparator();
    QAction *addTables = menu.addAction(QStringLiteral("Add tables..."));
    addTables->setEnabled(bool(TablesDialog));
    QAction *chosen = RunMenu(&menu, globalPos);
    if (chosen == addLink)
        StartAddLink();
    else if (chosen == deleteTable)
        DeleteActiveTable();
    else if (chosen == deleteLinks && Confirm(SDeleteLink))
        DeleteAllTableLinks(rep);
    else if (chosen == addTables)
        AddTablesDlg();
}

void TNStructDesignPanel::ShowAreaMenu(QPoint pos, QPoint globalPos)
{
    if (FAddingLink)
        return;
    TLinkRep *link = FLinkReps.IsOverSomeLink(pos.x(), pos.y());
    if (link)
        SetActiveLink(link);
    QMenu menu(this);
    QAction *editLink = nullptr;
    QAction *deleteLink = nullptr;
    if (link) {
        editLink = menu.addAction(SEditLink);
        editLink->setEnabled(bool(LinkEditor));
        deleteLink = menu.addAction(QStringLiteral("Delete link"));
        menu.addSeparator();
    }
    QAction *addLink = menu.addAction(QStringLiteral("Add link"));
    addLink->setEnabled(FTableReps.Count() > 0);
    QAction *addTables = menu.addAction(QStringLiteral("Add tables..."));
    addTables->setEnabled(bool(TablesDialog));
    QAction *arrange = menu.addAction(QStringLiteral("Arrange tables"));
    QAction *fullScreen =
        menu.addAction(FFullScreenMode ? QStringLiteral("Restore") : SFullScreenMode);
    QAction *chosen = RunMenu(&menu, globalPos);
    if (!chosen)
        return;
    if (chosen == editLink)
        EditActiveLink();
    else if (chosen == deleteLink)
        DeleteActiveLink();
    else if (chosen == addLink)
        StartAddLink();
    else if (chosen == addTables)
        AddTablesDlg();
    else if (chosen == arrange)
        ArrangeTables();
    else if (chosen == fullScreen)
        SetFullScreenMode(!FFullScreenMode);
}

} // namespace vm20
