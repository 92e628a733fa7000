#include "control/ClientListener.h"

#include "tests/support/DescriptorLimit.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <algorithm>
#include <memory>

namespace {

class ClientListenerTest : public testing::Test {
protected:
  void Listen(int maxConnections) {
    accepted_.clear();
    listener_ = std::make_unique<ClientListener>(maxConnections);
    QObject::connect(listener_.get(), &ClientListener::Accepted, listener_.get(), [this](QTcpSocket* socket) {
      socket->setParent(nullptr);
      accepted_.emplace_back(socket);
    });
    ASSERT_TRUE(listener_->Listen(QHostAddress::LocalHost, 0));
  }

  QTcpSocket& Connect() {
    clients_.push_back(std::make_unique<QTcpSocket>());
    clients_.back()->connectToHost(QHostAddress::LocalHost, listener_->Port());
    return *clients_.back();
  }
  void Connect(int clients) {
    for (int i = 0; i < clients; ++i) {
      Connect();
    }
  }
  bool WaitForRefused(std::ptrdiff_t count) {
    return test::WaitFor([&] {
      return std::count_if(clients_.begin(), clients_.end(), [](const auto& client) {
               return client->error() == QAbstractSocket::RemoteHostClosedError;
             }) == count;
    });
  }
  bool WaitForAccepted(std::size_t count) {
    return test::WaitFor([&] { return accepted_.size() == count; });
  }

  test::LogCapture log_;
  std::vector<std::unique_ptr<QTcpSocket>> accepted_;
  std::vector<std::unique_ptr<QTcpSocket>> clients_;
  std::unique_ptr<ClientListener> listener_;
};

const char RefusedBeyondThree[] =
    "Client \"127.0.0.1\" refused: 3 connections are open, the most that \"max_connections\" and the limit of "
    "open "
    "files allow. Others are refused in silence until one leaves.";

TEST_F(ClientListenerTest, AFloodBeyondTheLimitIsRefusedWithOneLine) {
  Listen(3);
  Connect(3);
  ASSERT_TRUE(WaitForAccepted(3));
  EXPECT_TRUE(log_.Lines().isEmpty());
  Connect(100);
  EXPECT_TRUE(WaitForRefused(100));
  EXPECT_EQ(accepted_.size(), 3U);
  EXPECT_EQ(log_.Lines(), QStringList{RefusedBeyondThree});
  for (const auto& kept : accepted_) {
    EXPECT_EQ(kept->state(), QAbstractSocket::ConnectedState);
  }
}

TEST_F(ClientListenerTest, ANewFloodAfterAnotherClientWasAcceptedHasALineOfItsOwn) {
  Listen(3);
  Connect(10);
  EXPECT_TRUE(WaitForRefused(7));
  accepted_.front()->abort();  // its own client and the seven are gone
  EXPECT_TRUE(WaitForRefused(8));
  Connect();
  EXPECT_TRUE(WaitForAccepted(4));
  Connect(10);
  EXPECT_TRUE(WaitForRefused(18));
  EXPECT_EQ(log_.Lines(), (QStringList{RefusedBeyondThree, RefusedBeyondThree}));
}

TEST_F(ClientListenerTest, ConnectionsThatAreDeletedMakeRoom) {
  Listen(3);
  for (std::size_t round = 1; round <= 5; ++round) {
    Connect(3);
    EXPECT_TRUE(WaitForAccepted(3));
    accepted_.clear();
  }
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(ClientListenerTest, AQuarterOfTheFileDescriptorsIsLeftToFiles) {
  {
    const test::DescriptorLimit limit(40);
    Listen(1000);
  }
  Connect(50);
  EXPECT_TRUE(WaitForRefused(20));
  EXPECT_EQ(accepted_.size(), 30U);
  ASSERT_EQ(log_.Lines().size(), 1);
  EXPECT_TRUE(log_.Lines().first().contains("refused: 30 connections are open"))
      << log_.Lines().first().toStdString();
}

/// Sockets of the system, made while there are descriptors to be had; they connect later.
class PreparedClients {
public:
  explicit PreparedClients(int count) {
    for (int i = 0; i < count; ++i) {
      handles_.push_back(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    }
  }
  ~PreparedClients() {
    for (const int handle : handles_) {
      close(handle);
    }
  }
  PreparedClients(const PreparedClients&) = delete;
  PreparedClients& operator=(const PreparedClients&) = delete;

  void Connect(quint16 port) const {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    for (const int handle : handles_) {
      EXPECT_EQ(connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
  }

private:
  std::vector<int> handles_;
};

rlim_t OpenedSoFar() {
  const int next = dup(STDERR_FILENO);  // takes the lowest number that is free
  close(next);
  return static_cast<rlim_t>(next);
}

const char NoDescriptor[] =
    "Clients can't be accepted: Too many open files . They wait, and nothing else is disturbed. Let others close, "
    "or "
    "raise the limit of open files.";

TEST_F(ClientListenerTest, WithoutFileDescriptorsClientsWaitAndOneLineTellsSo) {
  Listen(1000);
  Connect();
  ASSERT_TRUE(WaitForAccepted(1));
  const auto isServed = [this] {
    clients_.front()->write("served");
    return test::WaitFor([this] { return accepted_.front()->readAll() == "served"; });
  };
  ASSERT_TRUE(isServed());  // sanitizers need descriptors for their first look at a type
  const PreparedClients waiting(5);
  {
    const test::DescriptorLimit none(OpenedSoFar());
    waiting.Connect(listener_->Port());
    ASSERT_TRUE(test::WaitFor([&] { return !log_.Lines().isEmpty(); }));
    EXPECT_TRUE(isServed());
    EXPECT_EQ(accepted_.size(), 1U);
  }
  EXPECT_TRUE(WaitForAccepted(6));
  EXPECT_EQ(log_.Lines(), QStringList{NoDescriptor});
}

TEST_F(ClientListenerTest, OneThatIsClosedWhileClientsWaitStaysClosed) {
  Listen(1000);
  const PreparedClients waiting(1);
  {
    const test::DescriptorLimit none(OpenedSoFar());
    waiting.Connect(listener_->Port());
    ASSERT_TRUE(test::WaitFor([&] { return !log_.Lines().isEmpty(); }));
    listener_->Close();
  }
  EXPECT_FALSE(listener_->IsListening());
  EXPECT_EQ(listener_->Port(), 0);
  QTcpSocket late;
  late.connectToHost(QHostAddress::LocalHost, 1);
  EXPECT_TRUE(test::WaitFor([&] { return late.state() == QAbstractSocket::UnconnectedState; }));
  EXPECT_TRUE(accepted_.empty());
}

TEST_F(ClientListenerTest, APortThatIsTakenOnAllAddressesIsMetWithSilence) {
  ClientListener first(1);
  ASSERT_TRUE(first.Listen(QHostAddress::Any, 0));
  ClientListener second(1);
  EXPECT_FALSE(second.Listen(QHostAddress::Any, first.Port()));
  EXPECT_TRUE(log_.Lines().isEmpty());
  EXPECT_FALSE(second.Listen(QHostAddress("127.0.0.1"), first.Port()));
  EXPECT_EQ(log_.Lines().size(), 1);
}

}  // namespace
