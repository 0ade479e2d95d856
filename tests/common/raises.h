#pragma once
// What an action raises, as one text to compare in one assertion: "code:
// message" for errors that carry a code, the message for others, "no error"
// when the action returns. Other exception types pass through and fail the test.
#include <QString>

template <typename E, typename F>
QString Raised(F &&action)
{
    try {
        action();
    } catch (const E &e) {
        if constexpr (requires { e.ErrorCode(); })
            return QString::number(e.ErrorCode()) + QStringLiteral(": ") + e.Message();
        else
            return e.Message();
    }
    return QStringLiteral("no error");
}
