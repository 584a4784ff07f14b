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
  qunsetenv("http_proxy");
}

}  // namespace quintara::test
