#pragma once

#include <QtGlobal>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

/// A socket that listens at a port of this machine's loopback, or -1 if somebody has the port.
inline int ListenAt(quint16 port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int reuses = 1;
    setsockopt(handle, SOL_SOCKET, SO_REUSEADDR, &reuses, sizeof reuses);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(handle, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 && listen(handle, 64) == 0)
        return handle;
    close(handle);
    return -1;
}

/// A port of the loopback that nobody has, for the moment. Those that the system gives to whoever asks begin
/// at 32768; here each process of the tests has some below to itself, as it leaves them to programs that it
/// starts.
inline quint16 FreePort() {
    constexpr int First = 10000;
    constexpr int Count = 22000;
    constexpr int OfEach = 20;
    static int given = 0;
    for (int tried = 0; tried < Count; ++tried) {
        const auto port = static_cast<quint16>(First + (getpid() * OfEach + given++) % Count);
        const int handle = ListenAt(port);
        if (handle < 0)
            continue;
        close(handle);
        return port;
    }
    ADD_FAILURE() << "no port is free";
    return 0;
}
