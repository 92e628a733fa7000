#include "tests/unit/runfiles/Examples.h"

#include <numeric>

namespace test {
namespace {

using namespace std::string_literals;
using korvax::runfiles::FileType;
using korvax::runfiles::Form;
using korvax::runfiles::Kind;

const Example BinaryList{"BinaryList",
                         "list.bin",
                         FileType{Kind::List, Form::Binary},
                         "KVXS"s                 // magic
                         "1700000000"s,          // creation time
                         {"\x64\0\0\0\0\0\0\0"s  // timestamp 100
                          "\1\0\0\0"s            // channel
                          "\x39\x30\0\0"s        // energy_raw 12345
                          "\x39\x30\0\0"s        // energy_raw again
                          "\1\2\3\4"s            // low half of the energy
                          "\1"s,                 // flags
                          "\x58\2\0\0\0\0\0\0"s  // timestamp 600
                          "\7\0\0\0"s            // channel
                          "\xff\xff\0\0"s        // energy_raw 65535
                          "\xff\xff\0\0"s        // energy_raw again
                          "\0\0\0\0"s            // low half of the energy
                          "\0"s},                // flags
                         ""};

const Example CsvList{
    "CsvList", "list.csv", FileType{Kind::List, Form::Csv}, "", {"100,1,12345,\n", "600,7,65535,\n"}, ""};

const Example JsonList{"JsonList",
                       "list.json",
                       FileType{Kind::List, Form::Json},
                       "[",
                       {"{\"timestamp\":100,\"channel\":1,\"energy_raw\":12345}\n",
                        ",\n{\"timestamp\":600,\"channel\":7,\"energy_raw\":65535}\n"},
                       "]"};

const Example BinaryWaves{"BinaryWaves",
                          "waves.bin",
                          FileType{Kind::Waves, Form::Binary},
                          "KVXS"s                               // magic
                          "\0\0\0\0"s                           // zero
                          "\0\xf1\x53\x65\0\0\0\0"s,            // creation time 1700000000
                          {"\2\0\0\0"s                          // channels
                           "\3\0\0\0"s                          // samples
                           "\1\0\0\0"s                          // analog traces
                           "\2\0\0\0"s                          // digital traces
                           "\0\0\0\0"s                          // 0
                           "\1\0\0\0"s                          // 1
                           "\x64\0\0\0\0\0\0\0"s                // timestamp 100
                           "\0\0\0\0\0\0\0\0"s                  // channel 0, sample 0: 0.0
                           "\0\0\0\0\0\0\xf8\x3f"s              // 1.5
                           "\0\0\0\0\0\0\0\xc0"s                // -2.0
                           "\0\0\0\0"s                          // channel 0, digital words
                           "\1\0\0\0"s                          //
                           "\3\0\0\0"s                          //
                           "\0\0\0\0\x80\x84\x2e\x41"s          // channel 1, sample 0: 1000000.0
                           "\x55\x55\x55\x55\x55\x55\xd5\x3f"s  // 1/3
                           "\0\0\0\0\0\0\xf0\x3f"s              // 1.0
                           "\2\0\0\0"s                          // channel 1, digital words
                           "\2\0\0\0"s                          //
                           "\xff\xff\xff\xff"s,                 //
                           "\0\0\0\0"s                          // channels
                           "\3\0\0\0"s                          // samples
                           "\1\0\0\0"s                          // analog traces
                           "\2\0\0\0"s                          // digital traces
                           "\0\0\0\0"s                          // 0
                           "\1\0\0\0"s                          // 1
                           "\x58\2\0\0\0\0\0\0"s},              // timestamp 600
                          ""};

const Example CsvWaves{"CsvWaves",
                       "waves.csv",
                       FileType{Kind::Waves, Form::Csv},
                       "",
                       {"2,3,1,2,100,0,1.5,-2,0,1,3,1e+06,0.333333,1,2,2,4294967295,\n", "0,3,1,2,600,\n"},
                       ""};

const Example JsonWaves{"JsonWaves",
                        "waves.json",
                        FileType{Kind::Waves, Form::Json},
                        "[",
                        {"{\"n_channels\":2,\"n_samples\":3,\"n_analog\":1,\"n_digital\":2,\"timestamp\":100,"
                         "\"channels\":[{\"analog_traces\": [0,1,-2],\"digital_traces\": [0,1,3]},"
                         "{\"analog_traces\": [1000000,0,1],\"digital_traces\": [2,2,4294967295]}]}",
                         ",{\"n_channels\":0,\"n_samples\":3,\"n_analog\":1,\"n_digital\":2,\"timestamp\":600,"
                         "\"channels\":["},
                        "]"};

const Example BinaryRates{"BinaryRates",
                          "rates.bin",
                          FileType{Kind::Rates, Form::Binary},
                          "KVXR"s                               // magic
                          "\0\0\0\0"s                           // zero
                          "\0\xf1\x53\x65\0\0\0\0"s,            // creation time 1700000000
                          {"\xe8\3\0\0\0\0\0\0"s                // 1000 ms
                           "\2\0\0\0"s                          // channels
                           "\0\0\xc0\x3f"s                      // rates in: 1.5
                           "\0\x24\x74\x49"s                    // 1000000.0
                           "\0\0\0\x3f"s                        // rates out: 0.5
                           "\0\0\0\0"s                          // 0.0
                           "\2\0\0\0\0\0\0\0"s                  // counts in: 2
                           "\xff\xff\xff\xff\xff\xff\xff\xff"s  // 18446744073709551615
                           "\1\0\0\0\0\0\0\0"s                  // counts out: 1
                           "\3\0\0\0\0\0\0\0"s,                 // 3
                           "\xd0\7\0\0\0\0\0\0"s                // 2000 ms
                           "\0\0\0\0"s},                        // channels
                          ""};

// 32 channels and T0, in a notation that needs none of the program's.
std::string RateHead() {
  std::string line = "timestamp";
  const auto add = [&line](const char* name) {
    for (int channel = 0; channel <= 31; ++channel) {
      line += name + std::to_string(channel);
    }
  };
  add(",rate_in_ch");
  line += ",rate_in_T0";
  add(",rate_out_ch");
  add(",counts_in_ch");
  line += ",counts_in_T0";
  add(",counts_out_ch");
  return line + "\n";
}

const Example CsvRates{"CsvRates",
                       "rates.csv",
                       FileType{Kind::Rates, Form::Csv},
                       RateHead(),
                       {"1000,1.5,1e+06,0.5,2,18446744073709551615,1,\n", "2000,\n"},
                       ""};

const Example JsonRates{
    "JsonRates",
    "rates.json",
    FileType{Kind::Rates, Form::Json},
    "[",
    {",{\"timestamp\":1000,\"rate_in\":[1.5,1e+06],\"rate_out\":[0.5,0],"
     "\"counts_in\":[2,18446744073709551615],\"counts_out\":[1,3]}",
     ",{\"timestamp\":2000,\"rate_in\":[],\"rate_out\":[],\"counts_in\":[],\"counts_out\":[]}"},
    "]"};

}  // namespace

std::string Example::Bytes() const {
  return std::accumulate(records.begin(), records.end(), head) + tail;
}

const std::vector<Example>& Examples() {
  static const std::vector<Example> all{BinaryList, CsvList,     JsonList, BinaryWaves, CsvWaves,
                                        JsonWaves,  BinaryRates, CsvRates, JsonRates};
  return all;
}

const Example& ExampleOf(Kind kind, Form form) {
  for (const Example& example : Examples()) {
    if (example.type == FileType{kind, form}) {
      return example;
    }
  }
  throw std::logic_error("no such example");
}

}  // namespace test
