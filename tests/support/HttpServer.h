#pragma once

#include <arpa/inet.h>
#include <functional>
#include <mutex>
#include <netinet/in.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace ZroCommon::testing {

/// One connection to a test's HTTP server.
class HttpConnection {
public:
    explicit HttpConnection(int socket) : m_socket(socket) {}
    HttpConnection(const HttpConnection&) = delete;
    HttpConnection& operator=(const HttpConnection&) = delete;
    ~HttpConnection() { close(m_socket); }

    /// The request up to its blank line; empty when the other side went away, and one byte when it
    /// speaks something else.
    std::string readRequest() {
        std::string request;
        for (char byte = 0; !request.ends_with("\r\n\r\n") && recv(m_socket, &byte, 1, 0) == 1;) {
            request += byte;
            if (request.front() < 'A') {
                break;
            }
        }
        return request;
    }

    /// \return false when the other side went away
    bool send(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0) {
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    /// Ends the connection with a reset, so that what was sent last may be lost.
    void reset() {
        const linger now{1, 0};
        setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &now, sizeof(now));
    }

private:
    int m_socket;
};

/// An HTTP server on the loopback interface: the test says what each request is answered with. It
/// ends when all its connections have, so their streams are to go first.
class HttpServer {
public:
    using Handler = std::function<void(HttpConnection&, const std::string& path)>;

    explicit HttpServer(Handler handler)
        : m_handler(std::move(handler)), m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto* const plain = reinterpret_cast<sockaddr*>(&address);
        if (bind(m_socket, plain, size) != 0 || listen(m_socket, 16) != 0
            || getsockname(m_socket, plain, &size) != 0) {
            throw std::runtime_error("cannot listen on the loopback interface");
        }
        m_url = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
        m_thread = std::thread([this] { serve(); });
    }
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;
    ~HttpServer() {
        shutdown(m_socket, SHUT_RDWR);  // ends the wait for connections
        m_thread.join();
        for (std::thread& connection : m_connections) {
            connection.join();
        }
        close(m_socket);
    }

    /// "http://127.0.0.1:PORT" and the path.
    std::string url(const std::string& path) const { return m_url + path; }

    /// The requests so far, each whole.
    std::vector<std::string> requests() const {
        const std::lock_guard guard(m_lock);
        return m_requests;
    }

private:
    void serve() {
        for (int socket = 0; (socket = accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
            m_connections.emplace_back([this, socket] { answer(socket); });
        }
    }

    void answer(int socket) {
        HttpConnection connection(socket);
        const std::string request = connection.readRequest();
        const std::size_t start = request.find(' ') + 1;
        if (!request.empty()) {
            std::unique_lock guard(m_lock);
            m_requests.push_back(request);
            guard.unlock();
            m_handler(connection, request.substr(start, request.find(' ', start) - start));
        }
    }

    Handler m_handler;
    int m_socket;
    std::string m_url;
    mutable std::mutex m_lock;
    std::vector<std::string> m_requests;
    std::vector<std::thread> m_connections;
    std::thread m_thread;
};

}  // namespace ZroCommon::testing
