#pragma once

#include <arpa/inet.h>
#include <microhttpd.h>

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quintara::quotes {

struct ProviderRequest {
  std::string target, path, key;  // as it came, decoded, and the header X-Key
};

struct ProviderReplyText {
  int status = 200;
  std::string body;
  std::string location;  // counts for a redirect only
  bool trickles = false;
};

// A provider, over HTTPS if it has a certificate. Remembers what it was asked for.
class ProviderServer {
 public:
  using Answer = std::function<void(const ProviderRequest&, ProviderReplyText&)>;

  // The way to answer is the caller's and may change.
  explicit ProviderServer(const Answer& answer, const std::string& certificate = {},
                          const std::string& key = {})
      : answer_(answer) {
    const sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    const bool secure = !certificate.empty();
    const unsigned flags = MHD_USE_INTERNAL_POLLING_THREAD | MHD_USE_THREAD_PER_CONNECTION |
                           (secure ? MHD_USE_TLS : MHD_NO_FLAG);
    const MHD_OptionItem pair[] = {
        {MHD_OPTION_HTTPS_MEM_CERT, 0, const_cast<char*>(certificate.c_str())},
        {MHD_OPTION_HTTPS_MEM_KEY, 0, const_cast<char*>(key.c_str())},
        {MHD_OPTION_END, 0, nullptr}};
    daemon_ =
        MHD_start_daemon(flags, 0, nullptr, nullptr, &handle, this, MHD_OPTION_SOCK_ADDR, &address,
                         MHD_OPTION_URI_LOG_CALLBACK, &begin, nullptr, MHD_OPTION_NOTIFY_COMPLETED,
                         &end, nullptr, MHD_OPTION_ARRAY, secure ? pair : pair + 2, MHD_OPTION_END);
    host += std::to_string(MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_BIND_PORT)->port);
  }
  ProviderServer(const ProviderServer&) = delete;
  ~ProviderServer() { MHD_stop_daemon(daemon_); }

  std::string host = "127.0.0.1:";
  std::vector<std::string> targets;  // to be read once the replies are there

 private:
  static void* begin(void*, const char* target, MHD_Connection*) { return new std::string(target); }
  static void end(void*, MHD_Connection*, void** target, MHD_RequestTerminationCode) {
    delete static_cast<std::string*>(*target);
  }
  static ssize_t trickle(void*, std::uint64_t, char* to, std::size_t) {
    std::this_thread::sleep_for(std::chrono::milliseconds{200});
    *to = 'x';
    return 1;
  }
  static MHD_Result handle(void* server, MHD_Connection* connection, const char* path, const char*,
                           const char*, const char*, std::size_t*, void** target) {
    const char* key = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, "X-Key");
    ProviderReplyText reply;
    static_cast<ProviderServer*>(server)->answer(
        {*static_cast<std::string*>(*target), path, key != nullptr ? key : ""}, reply);
    MHD_Response* response =
        reply.trickles
            ? MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, 1, trickle, nullptr, nullptr)
            : MHD_create_response_from_buffer(reply.body.size(), reply.body.data(),
                                              MHD_RESPMEM_MUST_COPY);
    MHD_add_response_header(response, "Location", reply.location.c_str());
    const MHD_Result result =
        MHD_queue_response(connection, static_cast<unsigned>(reply.status), response);
    MHD_destroy_response(response);
    return result;
  }
  void answer(const ProviderRequest& request, ProviderReplyText& reply) {
    const std::lock_guard lock(mutex_);
    targets.push_back(request.target);
    answer_(request, reply);
  }

  const Answer& answer_;
  std::mutex mutex_;
  MHD_Daemon* daemon_;
};

}  // namespace quintara::quotes
