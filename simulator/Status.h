#pragma once

#include <cstdint>

namespace korvax::sim {

// What the six functions return: 0, or one of these negative codes (-4 and -15 are the server's own).
enum class Status : std::int32_t {
  Ok = 0,
  BadArgument = -1,          // a null pointer, or no memory left
  BadConnectionString = -2,  // unknown mode or key, bad value, a replay without a file
  BadHandle = -3,
  OpenRefused = -5,  // "open=fail" in the connection string
  UnknownPath = -6,
  BadValue = -7,
  ReadOnly = -8,
  UnknownCommand = -9,
  UnknownEndpoint = -10,
  Timeout = -11,         // nothing to read came within the time-out, or the endpoint is stopped
  EndOfData = -12,       // a replay or a limited number of blocks is at its end; reset begins anew
  ReadFailed = -13,      // "fail_read" in the connection string
  UnknownBlock = -14,    // not handed out by this endpoint, or freed before
  CannotReadFile = -16,  // the list file of a replay can't be opened, or reading it failed
  NoListFile = -17,      // the file of a replay is no list file, or one without a whole record
  BadChannels = -18,     // the list file has more channels than were asked for, or than a board can have
};

}  // namespace korvax::sim
