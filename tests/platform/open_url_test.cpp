#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <atomic>
#include <map>
#include <thread>

#include "platform/qt/http_client.hpp"
#include "support/faulty_server.hpp"
#include "support/qt/window_test.hpp"

namespace quintara::test {

struct OpenUrlTest : WindowTest {
  std::optional<ErrorKind> failureOf(const std::string& url) {
    CurlHttpClient http(application.dispatcher(), {.bytes = 100});
    return WindowTest::failureOf([&] { body = http.OpenURL(url, 0); });
  }
  FaultyServer server;
  std::string body;
};

TEST_F(OpenUrlTest, TooLongABodyAndWhatCannotBeAskedForAreFailedTransfers) {
  server.serve("HTTP/1.1 200 OK\r\n\r\n" + std::string(101, 'x'));
  EXPECT_EQ(failureOf(server.url("/")), ErrorKind::TransferFailed);
  const std::string withUser = "http://user:secret@" + server.url("/").substr(7);
  for (const char* url :
       {withUser.c_str(), "http:///x", "file:///etc/hostname", "http://no\xC3\xA9 host/"})
    EXPECT_EQ(failureOf(url), ErrorKind::TransferFailed) << url;
  EXPECT_EQ(server.targets.size(), 1U);
}

TEST_F(OpenUrlTest, TheTargetIsSentAsItStandsButForWhatHttpForbidsAndThroughNoProxy) {
  const std::string content = std::string("a\0b", 3) + std::string(97, 'x');
  server.serve("HTTP/1.1 200 OK\r\n\r\n" + content);
  qputenv("http_proxy", "http://127.0.0.1:1");
  const auto url = server.url("/a/../b/./t?s=^G b#c\x01\x7F\xC3\x84%41%zz+\"<|>");
  EXPECT_EQ(failureOf(url), std::nullopt);
  EXPECT_EQ(body, content);
  EXPECT_EQ(server.targets.back(), "/a/../b/./t?s=^G%20b%23c%01%7F%C3%84%41%zz+\"<|>");
  // Through that proxy a server far away, which sends the window to what this computer has.
  qputenv("http_proxy", server.host().c_str());
  server.serve("HTTP/1.1 302 Found\r\nLocation: " + server.url("/here") + "\r\n\r\n");
  EXPECT_EQ(failureOf("http://far.example/"), ErrorKind::TransferFailed);
  EXPECT_EQ(server.targets.back(), "http://far.example/");
  qunsetenv("http_proxy");
}

/// Answers each request over a Unix socket with the same bytes.
struct SocketServer {
  SocketServer(const QString& path, const std::string& reply)
      : thread([this, path, reply](const std::stop_token& stop) {
          QLocalServer server;
          listening = server.listen(path);
          listening.notify_all();
          while (!stop.stop_requested()) {
            if (!server.waitForNewConnection(50)) continue;
            QLocalSocket* const client = server.nextPendingConnection();
            client->waitForReadyRead(1000);
            requests += client->readAll().toStdString();
            client->write(reply.data(), static_cast<qint64>(reply.size()));
            client->waitForBytesWritten(1000);
            delete client;
          }
        }) {
    listening.wait(false);
  }
  std::string requests;  ///< to be read once it has ended
  std::atomic<bool> listening = false;
  std::jthread thread;
};

TEST_F(OpenUrlTest, ASocketOfTheUsersOwnIsAskedAsLocalhostAndNobodyElse) {
  const QTemporaryDir folder;
  const QString own = folder.path() + "/quintara";
  qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
  qputenv("http_proxy", server.host().c_str());
  EXPECT_EQ(failureOf("http://unix:history/t"), ErrorKind::TransferFailed) << "nobody listens";
  for (const auto& [reply, failure] : std::map<std::string, std::optional<ErrorKind>>{
           {"HTTP/1.1 200 OK\r\n\r\nbody", {}},
           {"HTTP/1.1 302 Found\r\nLocation: " + server.url("/") + "\r\n\r\n",
            ErrorKind::TransferFailed}}) {
    SocketServer service(own + "/history", reply);
    EXPECT_EQ(failureOf("http://unix:history/t?s=a b"), failure);
    service.thread = {};
    EXPECT_EQ(service.requests.find("GET /t?s=a%20b HTTP/1.1\r\nHost: localhost\r\n"), 0U);
  }
  EXPECT_EQ(body, "body");
  QFile(own).setPermissions(QFile::Permissions::fromInt(0x7777));
  EXPECT_EQ(failureOf("http://unix:history/t"), ErrorKind::TransferFailed) << "open to others";
  EXPECT_EQ(server.targets.size(), 0U);
  qunsetenv("http_proxy");
}

}  // namespace quintara::test
