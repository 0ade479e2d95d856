#pragma once
// Shared pieces of the widget tests: a shown host window and a locale scope.
#include "common/printers.h"
#include "ui/dropdownlabel.h"

#include <QApplication>
#include <QLocale>
#include <QStringList>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace vm20 {

// Every event a label raises, in order, as one text.
struct Recorder
{
    QStringList log;
    void Attach(TDropDownLabel *label)
    {
        label->BeforeDropDown = [this](QObject *) { log << QStringLiteral("before-down"); };
        label->AfterDropDown = [this](QObject *) { log << QStringLiteral("after-down"); };
        label->BeforeDropUp = [this](QObject *, QString &, bool &accept) {
            log << QStringLiteral("before-up(%1)").arg(accept);
        };
        label->AfterDropUp = [this](QObject *, bool accepted) { log << QStringLiteral("after-up(%1)").arg(accepted); };
        label->OnAltClick = [this](QObject *) { log << QStringLiteral("alt-click"); };
    }
    QString Text() const { return log.join(QLatin1Char(' ')); }
};

// A top-level window that labels are placed on; shown and active so that
// focus moves as it does for a user.
class HostTest : public testing::Test
{
protected:
    void SetUp() override
    {
        host = std::make_unique<QWidget>();
        host->resize(400, 300);
        host->show();
        host->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(host.get()));
    }

    template <typename Label>
    Label *Place(int x, int y)
    {
        auto *label = new Label(host.get());
        label->move(x, y);
        label->show();
        return label;
    }

    // Declared first so that it outlives the labels the host destroys.
    Recorder events;
    std::unique_ptr<QWidget> host;
};

// Sets the default locale for one test and restores it.
class LocaleScope
{
public:
    explicit LocaleScope(const QLocale &locale) : FOld(QLocale()) { QLocale::setDefault(locale); }
    ~LocaleScope() { QLocale::setDefault(FOld); }

private:
    QLocale FOld;
};

} // namespace vm20
