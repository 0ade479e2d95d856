// A server that takes the connection and never answers must not hang the
// caller: the connect timeout reaches the driver.
#include "providers/dburl.h"

#include "model/errors.h"
#include "providers/sqlerrors.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vm20 {
namespace {

// A listening socket on 127.0.0.1 that never accepts: the kernel completes
// the handshake, and then nothing is ever said.
class TSilentPort
{
public:
    TSilentPort()
    {
        FSocket = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (FSocket < 0 || ::bind(FSocket, reinterpret_cast<sockaddr *>(&address), length) != 0
            || ::listen(FSocket, 4) != 0
            || ::getsockname(FSocket, reinterpret_cast<sockaddr *>(&address), &length) != 0)
            return;
        FPort = ntohs(address.sin_port);
    }
    ~TSilentPort()
    {
        if (FSocket >= 0)
            ::close(FSocket);
    }
    TSilentPort(const TSilentPort &) = delete;
    TSilentPort &operator=(const TSilentPort &) = delete;
    int Port() const { return FPort; }

private:
    int FSocket = -1;
    int FPort = 0;
};

TEST(ConnectTimeout, ASilentServerFailsTheOpenInTime)
{
    TSilentPort silent;
    ASSERT_GT(silent.Port(), 0);
    QElapsedTimer clock;
    clock.start();
    try {
        OpenDatabaseUrl(QStringLiteral("postgresql://u@127.0.0.1:%1/db?connect_timeout=2").arg(silent.Port()),
                        true);
        ADD_FAILURE() << "a silent server was taken for a database";
    } catch (const ENDBInfoError &e) {
        EXPECT_EQ(e.ErrorCode(), dbieCannotOpen) << e.Message().toStdString();
    }
    EXPECT_LT(clock.elapsed(), 8000) << "the timeout did not reach the driver";
}

} // namespace
} // namespace vm20
