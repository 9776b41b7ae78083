#pragma once

#include <cstdint>

#include "platform/String.h"

namespace vintrace::test {

/// A reply, and what a page comes of it.
struct Reply {
  String bytes;
  String page;
  std::int64_t status;
};

inline const Reply Replies[] = {
    {"HTTP/1.0 200 OK\r\nContent-Length: 5\r\n\r\nhello", "hello", 200},
    {"HTTP/1.0 200 OK\r\nA: 1\r\n\r\nuntil the end", "until the end", 200},
    {"HTTP/1.0 200 OK\nA: 1\nA: 2\n\nbare LF", "bare LF", 200},
    {"HTTP/1.0 200 OK\rA: 1\r\rbare CR", "bare CR", 200},
    {"HTTP/1.0 200 OK\r\nA: 1\r\n  2\r\n\r\n", "", 200},
    {"HTTP/1.1 404 Not Found\r\ncontent-LENGTH: 2\r\n\r\nno", "no", 404},
    {"HTTP/1.0 301 Moved\r\nLocation: /x\r\n\r\nmoved", "moved", 301},
    {"HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\n\r\nx", "HTTP/1.1 200 OK\r\n\r\nx", 100},
    {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\nx\r\n0\r\n\r\n",
     "1\r\nx\r\n0\r\n\r\n", 200},
    {"HTTP/1.0 200 OK\r\nContent-Length: 0\r\n\r\nx", "x", 200},
    {"HTTP/1.0 200 OK\r\nContent-Length: -1\r\n\r\nx", "x", 200},
    {"HTTP/1.0 200 OK\r\nContent-Length: many\r\n\r\nx", "x", 200},
    {"HTTP/1.0 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nx", "x", 200},
    {"HTTP/1.0 401 No\r\nContent-Length: 1\r\n\r\nx", "x", 401},
    {"HTTP/1.0 407 No\r\n\r\nx", "x", 407},
    {"garbage\r\n\r\nx", "x", 0},
    {"\r\n\r\nx", "x", 0},
    {"no headers at all", "no headers at all", 0},
    {"", "", 0},
};

}  // namespace vintrace::test
