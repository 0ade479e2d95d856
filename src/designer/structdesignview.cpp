// The panel's frame around the diagram: the action hint line, the
// full-screen button and form.
#include "designer/designarea.h"
#include "designer/structdesignpanel.h"
#include "model/messages.h"
#include "support/nstrings.h"
#include "ui/readablecolor.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QToolButton>

namespace vm20 {

namespace {

// The button's glyphs are drawn here rather than shipped as images: one
// window outline to enlarge, two overlapping ones to restore. Black on
// white over a light diagram; lighter lines on the base over a dark one.
QIcon WindowGlyph(bool restore, const QColor &background)
{
    const QColor ink = ReadableOn(Qt::black, background);
    const QColor paper = background.lightnessF() < 0.5 ? background : QColor(Qt::white);
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QPen(ink, 2));
    if (restore) {
        painter.drawRect(11, 5, 16, 14);
        painter.fillRect(5, 12, 17, 15, paper);
        painter.drawRect(5, 12, 16, 14);
        painter.fillRect(5, 12, 17, 4, ink);
    } else {
        painter.drawRect(5, 6, 22, 20);
        painter.fillRect(5, 6, 23, 5, ink);
    }
    return QIcon(pixmap);
}

} // namespace

void TNStructDesignPanel::SetActionHints(bool value)
{
    if (value == ActionHints())
        return;
    if (value) {
        FHintLabel = new QLabel(this);
        FHintLabel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        FHintLabel->setWordWrap(false);
        FHintLabel->setContentsMargins(4, 1, 4, 1);
        static_cast<QBoxLayout *>(layout())->addWidget(FHintLabel);
        SetHint(FAddingLink ? (AddLinkStage() == 2 ? QStringLiteral("AddLinkStage2Hint")
                                                   : QStringLiteral("AddLinkStage1Hint"))
                            : QStringLiteral("IdleHint"));
    } else {
        delete FHintLabel;
        FHintLabel = nullptr;
    }
}

void TNStructDesignPanel::SetHint(const QString &name)
{
    FHintName = name;
    if (FHintLabel)
        FHintLabel->setText(ValueOf(FHintTexts, name));
}

QString TNStructDesignPanel::CurrentHint() const
{
    return FHintLabel ? FHintLabel->text() : QString();
}

void TNStructDesignPanel::SetShowFullScreenButton(bool value)
{
    if (FShowFullScreenButton == value)
        return;
    FShowFullScreenButton = value;
    UpdateFullScreenButton();
}

void TNStructDesignPanel::UpdateFullScreenButton()
{
    FFullScreenButton->setVisible(FShowFullScreenButton);
    FFullScreenButton->setToolTip(FFullScreenMode ? QStringLiteral("Restore") : SFullScreenMode);
    FFullScreenButton->setIcon(WindowGlyph(FFullScreenMode, palette().color(QPalette::Base)));
    PlaceFullScreenButton();
}

void TNStructDesignPanel::PlaceFullScreenButton()
{
    const int side = fontMetrics().height() + 6;
    FFullScreenButton->setIconSize(QSize(side - 6, side - 6));
    const QRect area = FDesignArea->viewport()->geometry();
    FFullScreenButton->setGeometry(area.right() - side - 2, area.top() + 2, side, side);
    FFullScreenButton->raise();
}

void TNStructDesignPanel::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    PlaceFullScreenButton();
}

void TNStructDesignPanel::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    if (!FActive && FStruct)
        Activate();
    PlaceFullScreenButton();
}

void TNStructDesignPanel::SetFullScreenMode(bool value)
{
    if (FFullScreenMode == value)
        return;
    if (value) {
        QScreen *screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
        const QRect work = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
        FSavedParent = parentWidget();
        FSavedGeometry = geometry();
        FSavedLayoutIndex = -1;
        if (FSavedParent && FSavedParent->layout())
            FSavedLayoutIndex = FSavedParent->layout()->indexOf(this);
        FFullScreenForm = new QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint);
        FFullScreenForm->setAttribute(Qt::WA_DeleteOnClose);
        FFullScreenForm->setWindowTitle(QStringLiteral("Design panel full screen mode ") +
                                        QString::number(work.height()));
        FFullScreenForm->setGeometry(work);
        auto *layout = new QVBoxLayout(FFullScreenForm);
        layout->setContentsMargins(0, 0, 0, 0);
        setParent(FFullScreenForm);
        layout->addWidget(this);
        FFullScreenForm->installEventFilter(this);
        FFullScreenMode = true;
        show();
        FFullScreenForm->show();
    } else {
        QWidget *form = FFullScreenForm;
        FFullScreenForm = nullptr;
        FFullScreenMode = false;
        if (form)
            form->removeEventFilter(this);
        setParent(FSavedParent);
        if (FSavedParent && FSavedLayoutIndex >= 0) {
            if (auto *box = qobject_cast<QBoxLayout *>(FSavedParent->layout()))
                box->insertWidget(FSavedLayoutIndex, this);
            else
                FSavedParent->layout()->addWidget(this);
        } else {
            setGeometry(FSavedGeometry);
        }
        if (FSavedParent)
            show();
        if (form)
            form->close();
    }
    UpdateFullScreenButton();
    InvalidateLinks();
}

void TNStructDesignPanel::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && FFullScreenButton)
        FFullScreenButton->setIcon(WindowGlyph(FFullScreenMode, palette().color(QPalette::Base)));
}

bool TNStructDesignPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == FFullScreenForm && event->type() == QEvent::Close && FFullScreenMode)
        SetFullScreenMode(false);
    return QFrame::eventFilter(watched, event);
}

} // namespace vm20
