// The states the gallery shows: each control idle, focused, dropped, right
// to left, long menus in columns, buttons pressed and hovered.
#include "shots.h"

#include "ui/dropdownchecklistbox.h"
#include "ui/dropdowndatetimeedit.h"
#include "ui/dropdownedit.h"
#include "ui/dropdownlistbox.h"
#include "ui/dropdownmaskedit.h"
#include "ui/dropdownpopup.h"
#include "ui/menuview.h"
#include "ui/nchecklistbox.h"
#include "ui/rndbtn.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QLineEdit>
#include <QPainter>

using namespace vm20;

namespace {

std::unique_ptr<QWidget> Host(int width, int height, Qt::LayoutDirection direction = Qt::LeftToRight)
{
    auto host = std::make_unique<QWidget>();
    host->setLayoutDirection(direction);
    host->resize(width, height);
    host->setMinimumSize(width, height);
    host->setAutoFillBackground(true);
    QPalette palette = host->palette();
    palette.setColor(QPalette::Window, Qt::white);
    host->setPalette(palette);
    return host;
}

// Labels read as links: blue, as the panels draw field and value labels.
template <typename Label>
Label *Place(QWidget *host, int x, int y)
{
    auto *label = new Label(host);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor(0, 0, 255));
    label->setPalette(palette);
    label->move(x, y);
    label->SetBiDiMode(host->layoutDirection());
    return label;
}

// x measured from the host's near edge, whatever the direction.
int Near(QWidget *host, QWidget *label, int x)
{
    return host->layoutDirection() == Qt::RightToLeft ? host->width() - x - label->width() : x;
}

void PlaceAt(QWidget *host, QWidget *label, int x, int y)
{
    label->move(Near(host, label, x), y);
}

std::shared_ptr<TImageList> Images()
{
    auto images = std::make_shared<TImageList>();
    for (const QColor &color : {QColor(0, 128, 0), QColor(0, 0, 255), QColor(200, 120, 0)}) {
        QPixmap pixmap(32, 32);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(color);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(QRectF(4, 4, 24, 24), 5, 5);
        images->append(QIcon(pixmap));
    }
    return images;
}

TDropDownPopup *FieldLabel(QWidget *host, int x, int y)
{
    auto *label = Place<TDropDownPopup>(host, x, y);
    label->AddItem(QString(), QStringLiteral("o.id"), QStringLiteral("Order number"));
    label->AddItem(QString(), QStringLiteral("o.date"), QStringLiteral("Order date"));
    label->AddItem(QString(), QStringLiteral("-"), QStringLiteral("-"));
    for (const char *field : {"Name", "City", "Country", "Phone"})
        label->AddItem(QStringLiteral("Customer"), QStringLiteral("c.") + QLatin1String(field), QLatin1String(field));
    for (const char *field : {"Product", "Price & tax"})
        label->AddItem(QStringLiteral("Item"), QStringLiteral("i.") + QLatin1String(field), QLatin1String(field));
    label->OnGetGroupImageIndex = [](const QString &, int &index) { index = 0; };
    label->OnGetItemImageIndex = [](const QString &group, const QString &, int &index) { index = group.isEmpty() ? 1 : 2; };
    label->SetValue(QStringLiteral("c.City"));
    return label;
}

// One condition as the panel shows it: field, operator, value labels, and
// further labels of each kind below.
struct Sentence
{
    TDropDownPopup *field;
    TDropDownPopup *op;
    TDropDownEdit *value;
    TDropDownMaskEdit *phone;
    TDropDownDateTimeEdit *date;
    TDropDownListBox *status;
    TDropDownCheckListBox *countries;
};

Sentence Sentences(QWidget *host)
{
    Sentence s{};
    auto *button = new TNRndBtn(host);
    button->SetCaption(QStringLiteral("1"));
    button->SetAutoSize(true);
    PlaceAt(host, button, 8, 8);
    s.field = FieldLabel(host, 0, 8);
    PlaceAt(host, s.field, 34, 8);
    s.op = Place<TDropDownPopup>(host, 0, 8);
    s.op->AddItems(QString(), {QStringLiteral("="), QStringLiteral("starts")}, {QStringLiteral("equals"), QStringLiteral("starts with")});
    s.op->SetValue(QStringLiteral("starts"));
    PlaceAt(host, s.op, 34 + s.field->width() + 8, 8);
    s.value = Place<TDropDownEdit>(host, 0, 8);
    s.value->SetValue(QStringLiteral("Ann"));
    PlaceAt(host, s.value, 34 + s.field->width() + s.op->width() + 16, 8);

    s.phone = Place<TDropDownMaskEdit>(host, 0, 36);
    s.phone->SetEditMask(QStringLiteral("!\\(999\\)000-0000;0;_"));
    s.phone->SetValue(QStringLiteral("5551234567"));
    s.phone->SetCaption(QStringLiteral("(555)123-4567"));
    PlaceAt(host, s.phone, 34, 36);
    s.date = Place<TDropDownDateTimeEdit>(host, 0, 36);
    s.date->SetValue(QStringLiteral("45306"));
    PlaceAt(host, s.date, 160, 36);
    s.status = Place<TDropDownListBox>(host, 0, 64);
    s.status->AddItems(QString(), {QStringLiteral("O"), QStringLiteral("S"), QStringLiteral("C"), QStringLiteral("R")},
                       {QStringLiteral("Open"), QStringLiteral("Shipped"), QStringLiteral("Closed"),
                        QStringLiteral("Returned to the warehouse after delivery")});
    s.status->SetValue(QStringLiteral("S"));
    PlaceAt(host, s.status, 34, 64);
    s.countries = Place<TDropDownCheckListBox>(host, 0, 64);
    s.countries->AddItems(QString(), {QStringLiteral("de"), QStringLiteral("fr"), QStringLiteral("it"), QStringLiteral("nl")},
                          {QStringLiteral("Germany"), QStringLiteral("France"), QStringLiteral("Italy"), QStringLiteral("Netherlands")});
    s.countries->SetValue(QStringLiteral("fr,nl"));
    PlaceAt(host, s.countries, 160, 64);
    return s;
}

GalleryShot Labels(Qt::LayoutDirection direction, bool focused)
{
    GalleryShot shot{Host(380, 90, direction), {}, {}};
    Sentence s = Sentences(shot.widget.get());
    s.value->SetFocused(focused);
    s.countries->SetFocused(focused);
    return shot;
}

template <typename Drop>
GalleryShot Dropped(int height, Qt::LayoutDirection direction, Drop drop)
{
    GalleryShot shot{Host(380, height, direction), {}, {}};
    Sentence s = Sentences(shot.widget.get());
    drop(s, shot);
    return shot;
}

// A pop-up label's menu as it would open under the label.
void MenuUnder(TDropDownPopup *label, GalleryShot &shot, bool openFirstGroup)
{
    label->BuildMenu();
    auto view = std::make_shared<TMenuView>(label->Menu(), &label->Menu()->Items(), nullptr);
    const bool rtl = label->layoutDirection() == Qt::RightToLeft;
    const QPoint at(rtl ? label->geometry().right() + 1 - view->width() : label->x(), label->geometry().bottom() + 1);
    shot.overlays.emplace_back(view.get(), at);
    shot.keep.push_back(view);
    if (openFirstGroup) {
        for (int i = 0; i < view->Level()->Count(); ++i) {
            if (!view->Level()->Items(i)->Count())
                continue;
            auto sub = std::make_shared<TMenuView>(label->Menu(), view->Level()->Items(i), nullptr);
            const QRect item = view->ItemRect(i);
            const QPoint subAt = at + QPoint(rtl ? item.left() - sub->width() : item.right() + 1, item.top() - 1);
            shot.overlays.emplace_back(sub.get(), subAt);
            shot.keep.push_back(sub);
            view->SetCurrent(i);
            break;
        }
    }
}

GalleryShot LongMenu(int count, int maxItemCount, TNPopupSplitType split)
{
    GalleryShot shot{Host(200, 30), {}, {}};
    auto *label = Place<TDropDownPopup>(shot.widget.get(), 8, 6);
    for (int i = 0; i < count; ++i)
        label->AddItem(QString(), QString::number(i), QStringLiteral("Field %1").arg(i + 1));
    label->SetValue(QStringLiteral("0"));
    label->SetMaxItemCount(maxItemCount);
    label->BuildMenu();
    if (maxItemCount == 0) {
        label->Menu()->SetPopupSplitType(split);
        label->Menu()->ApplyScreenBreaks(40); // a screen of 40 rows
    }
    auto view = std::make_shared<TMenuView>(label->Menu(), &label->Menu()->Items(), nullptr);
    shot.overlays.emplace_back(view.get(), QPoint(8, label->geometry().bottom() + 1));
    shot.keep.push_back(view);
    return shot;
}

GalleryShot Buttons(bool pressed, bool hovered)
{
    GalleryShot shot{Host(300, 36), {}, {}};
    int x = 8;
    for (bool rounded : {true, false})
        for (bool flat : {false, true}) {
            auto *b = new TNRndBtn(shot.widget.get());
            b->SetCaption(QStringLiteral("12"));
            b->SetRounded(rounded);
            b->SetFlat(flat);
            b->SetAutoSize(true);
            b->SetMargin(0);
            b->move(x, 8);
            b->SetAllowPress(true);
            b->SetPressed(pressed);
            if (hovered) {
                QEnterEvent enter{QPointF(), QPointF(), QPointF()};
                QCoreApplication::sendEvent(b, &enter);
            }
            x += b->width() + 12;
        }
    auto *wide = new TNRndBtn(shot.widget.get());
    wide->SetCaption(QStringLiteral("128"));
    wide->SetAutoSize(true);
    wide->SetPressedColor(QColor(255, 220, 120));
    wide->SetOverColor(QColor(200, 230, 255));
    wide->SetAllowPress(true);
    wide->SetPressed(pressed);
    if (hovered) {
        QEnterEvent enter{QPointF(), QPointF(), QPointF()};
        QCoreApplication::sendEvent(wide, &enter);
    }
    wide->move(x, 8);
    return shot;
}

} // namespace

std::vector<GalleryState> ResultPanelStates();

std::vector<GalleryState> GalleryStates()
{
    const auto ltr = Qt::LeftToRight;
    const auto rtl = Qt::RightToLeft;
    std::vector<GalleryState> states = {
        {QStringLiteral("labels-idle"), [=] { return Labels(ltr, false); }, true},
        {QStringLiteral("labels-focused"), [=] { return Labels(ltr, true); }},
        {QStringLiteral("labels-rtl"), [=] { return Labels(rtl, false); }, true},
        {QStringLiteral("edit-dropped"), [=] {
             return Dropped(90, ltr, [](Sentence &s, GalleryShot &) {
                 s.value->DropDown();
                 static_cast<QLineEdit *>(s.value->EditControl())->setText(QStringLiteral("Anna-Lena"));
             });
         }},
        {QStringLiteral("edit-dropped-rtl"), [=] {
             return Dropped(90, rtl, [](Sentence &s, GalleryShot &) {
                 s.value->DropDown();
                 static_cast<QLineEdit *>(s.value->EditControl())->setText(QStringLiteral("Anna-Lena"));
             });
         }},
        {QStringLiteral("mask-dropped"), [=] {
             return Dropped(90, ltr, [](Sentence &s, GalleryShot &) {
                 s.phone->DropDown();
                 static_cast<QLineEdit *>(s.phone->EditControl())->setText(QStringLiteral("555123"));
             });
         }},
        {QStringLiteral("date-dropped"), [=] {
             return Dropped(90, ltr, [](Sentence &s, GalleryShot &) { s.date->DropDown(); });
         }},
        {QStringLiteral("listbox-dropped"), [=] {
             return Dropped(170, ltr, [](Sentence &s, GalleryShot &) { s.status->DropDown(); });
         }},
        {QStringLiteral("listbox-dropped-rtl"), [=] {
             return Dropped(170, rtl, [](Sentence &s, GalleryShot &) { s.status->DropDown(); });
         }},
        {QStringLiteral("listbox-upward"), [=] {
             return Dropped(170, ltr, [](Sentence &s, GalleryShot &) {
                 s.status->move(s.status->x(), 140);
                 s.status->DropDown();
             });
         }},
        {QStringLiteral("checklist-selection"), [=] {
             return Dropped(170, ltr, [](Sentence &s, GalleryShot &) {
                 s.countries->DropDown();
                 TNCheckListBox *list = s.countries->CheckListBox();
                 list->setCurrentRow(1);
                 list->item(2)->setSelected(true);
             });
         }},
        {QStringLiteral("popup-dropped"), [=] {
             return Dropped(90, ltr, [](Sentence &s, GalleryShot &shot) {
                 static const auto images = Images();
                 s.field->SetImages(images.get());
                 MenuUnder(s.field, shot, true);
             });
         }},
        {QStringLiteral("popup-dropped-rtl"), [=] {
             return Dropped(90, rtl, [](Sentence &s, GalleryShot &shot) {
                 static const auto images = Images();
                 s.field->SetImages(images.get());
                 MenuUnder(s.field, shot, true);
             });
         }},
        {QStringLiteral("popup-dropped-dark"), [=] {
             return Dropped(90, ltr, [](Sentence &s, GalleryShot &shot) {
                 static const auto images = Images();
                 s.field->SetImages(images.get());
                 s.value->SetFocused(true);
                 MenuUnder(s.field, shot, true);
                 Darken(shot);
             });
         }},
        {QStringLiteral("buttons-dark"), [] { return Darkened(Buttons(false, false)); }},
        {QStringLiteral("menu-max-item-count"), [] { return LongMenu(25, 10, pstBalanced); }},
        {QStringLiteral("menu-fit-balanced"), [] { return LongMenu(100, 0, pstBalanced); }},
        {QStringLiteral("menu-fit-fill-first"), [] { return LongMenu(100, 0, pstFillFirst); }},
        {QStringLiteral("buttons-idle"), [] { return Buttons(false, false); }, true},
        {QStringLiteral("buttons-hovered"), [] { return Buttons(false, true); }},
        {QStringLiteral("buttons-pressed"), [] { return Buttons(true, false); }},
    };
    for (GalleryState &state : DesignerStates())
        states.push_back(std::move(state));
    for (GalleryState &state : ResultPanelStates())
        states.push_back(std::move(state));
    return states;
}

QPalette DarkPalette()
{
    QPalette palette;
    const QColor text(220, 220, 220);
    const QColor disabled(127, 127, 127);
    palette.setColor(QPalette::Window, QColor(45, 45, 45));
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::AlternateBase, QColor(53, 53, 53));
    palette.setColor(QPalette::ToolTipBase, QColor(60, 60, 60));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, disabled);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(53, 53, 53));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, QColor(255, 80, 80));
    palette.setColor(QPalette::Light, QColor(80, 80, 80));
    palette.setColor(QPalette::Midlight, QColor(66, 66, 66));
    palette.setColor(QPalette::Mid, QColor(40, 40, 40));
    palette.setColor(QPalette::Dark, QColor(30, 30, 30));
    palette.setColor(QPalette::Shadow, QColor(15, 15, 15));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(100, 170, 255));
    palette.setColor(QPalette::LinkVisited, QColor(170, 130, 255));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, disabled);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(80, 80, 80));
    return palette;
}

void Darken(GalleryShot &shot)
{
    const QPalette dark = DarkPalette();
    shot.widget->setPalette(dark);
    for (const auto &overlay : shot.overlays)
        overlay.first->setPalette(dark);
}

GalleryShot Darkened(GalleryShot shot)
{
    Darken(shot);
    return shot;
}

QImage RenderShot(const GalleryShot &shot, qreal devicePixelRatio)
{
    QWidget *widget = shot.widget.get();
    widget->ensurePolished();
    // Layouts and the panels' deferred placing run as they would on screen.
    QCoreApplication::processEvents();
    QRect area = widget->rect();
    for (const auto &[overlay, at] : shot.overlays)
        area = area.united(QRect(at, overlay->size()));
    area.adjust(0, 0, 4, 4);
    QImage image(area.size() * devicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(QColor(240, 240, 240));
    QPainter painter(&image);
    widget->render(&painter, -area.topLeft());
    for (const auto &[overlay, at] : shot.overlays)
        overlay->render(&painter, at - area.topLeft());
    return image;
}
