#pragma once
// A bare HTTP/1.1 client on one loopback socket, for traffic no well-behaved client sends:
// requests cut short, bodies past a limit, hand-made targets. Failures are values; a reset
// connection is told apart from a closed one.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <expected>
#include <string>
#include <string_view>

namespace raw_http {

struct Answer {
    int status = 0;
    std::string body;
};

enum class Failure { refused, reset, closed, timedOut, malformed };

inline std::string request(std::string_view method, std::string_view target, std::string_view key,
                           std::string_view body = {}, std::string_view extraHeaders = {}) {
    std::string text = std::string(method) + " " + std::string(target) + " HTTP/1.1\r\nHost: 127.0.0.1\r\n";
    if (!key.empty()) text += "KV-API-KEY: " + std::string(key) + "\r\n";
    text += extraHeaders;
    if (!body.empty() || method == "POST") text += "Content-Length: " + std::to_string(body.size()) + "\r\n";
    return text + "\r\n" + std::string(body);
}

class Connection {
public:
    explicit Connection(int port) : fd_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
            ::close(fd_);
            fd_ = -1;
            return;
        }
        int on = 1;
        ::setsockopt(fd_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
    ~Connection() {
        if (fd_ >= 0) ::close(fd_);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    [[nodiscard]] bool connected() const { return fd_ >= 0; }

    // Sends the bytes as they are.
    [[nodiscard]] std::expected<void, Failure> send(std::string_view bytes) {
        if (fd_ < 0) return std::unexpected(Failure::refused);
        while (!bytes.empty()) {
            const auto sent = ::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent < 0) return std::unexpected(errno == ECONNRESET ? Failure::reset : Failure::closed);
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
        return {};
    }

    // Reads one answer: the status line, headers with Content-Length, and the body.
    [[nodiscard]] std::expected<Answer, Failure> read(std::chrono::milliseconds timeout) {
        const auto deadline = std::chrono::steady_clock::now() + timeout;
        std::size_t headerEnd = std::string::npos;
        std::size_t total = std::string::npos;
        while (total == std::string::npos || buffered_.size() < total) {
            if (headerEnd == std::string::npos && (headerEnd = buffered_.find("\r\n\r\n")) != std::string::npos) {
                const auto at = lowerHeaders(headerEnd).find("content-length:");
                total = headerEnd + 4 + (at == std::string::npos ? 0 : std::stoul(buffered_.substr(at + 15)));
                continue;
            }
            if (auto more = receive(deadline); !more) return std::unexpected(more.error());
        }
        if (!buffered_.starts_with("HTTP/1.1 ")) return std::unexpected(Failure::malformed);
        Answer answer{std::stoi(buffered_.substr(9, 3)), buffered_.substr(headerEnd + 4, total - headerEnd - 4)};
        buffered_.erase(0, total);
        return answer;
    }

    [[nodiscard]] std::expected<Answer, Failure> exchange(std::string_view bytes, std::chrono::milliseconds timeout) {
        if (auto sent = send(bytes); !sent) return std::unexpected(sent.error());
        return read(timeout);
    }

private:
    std::string lowerHeaders(std::size_t end) const {
        std::string lower = buffered_.substr(0, end);
        for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return lower;
    }

    std::expected<void, Failure> receive(std::chrono::steady_clock::time_point deadline) {
        if (fd_ < 0) return std::unexpected(Failure::refused);
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd ready{fd_, POLLIN, 0};
        if (left.count() <= 0 || ::poll(&ready, 1, static_cast<int>(left.count())) == 0) {
            return std::unexpected(Failure::timedOut);
        }
        char chunk[16384];
        const auto got = ::recv(fd_, chunk, sizeof chunk, 0);
        if (got < 0) return std::unexpected(errno == ECONNRESET ? Failure::reset : Failure::closed);
        if (got == 0) return std::unexpected(Failure::closed);
        buffered_.append(chunk, static_cast<std::size_t>(got));
        return {};
    }

    int fd_ = -1;
    std::string buffered_;
};

}  // namespace raw_http
