#include "client/HelpTexts.h"

namespace korvax::client::help {

const char* const description =
    "korvaxctl talks to a running korvax-boards-server: it sends queries, draws spectra in the terminal,\n"
    "and starts, stops and resets counting.";

const char* const footer = R"(Examples:
  korvaxctl query commands '{"cmd":"get_run_info"}'
  korvaxctl spectrum processing/0/filter_chain/main/chain/spectrum --live
  korvaxctl start processing/0/filter_chain/main/chain/spectrum
  korvaxctl stop processing/0/filter_chain/main/chain/spectrum
  korvaxctl reset processing/0/filter_chain/main/chain/spectrum
  korvaxctl status processing/0/filter_chain/main/chain/spectrum

Every command takes --host, --port and --timeout, before or after its name, and --help.

Exit codes:
  0  done
  1  the output can't be written
  2  the command line can't be understood
  3  no server at the address, or it went away before it answered
  4  empty answer: wrong path or name, or a block that this route or query doesn't serve
  5  no answer within the time-out
  6  the answer isn't of the kind that the command needs)";

const char* const queryFooter = R"(A target with a "/" in it is a full path, any other is
the name of a block. The answer is printed as it came.

By full path: spectra, time distributions, positions, images, rate counters, high voltage
  korvaxctl query processing/0/filter_chain/main/chain/spectrum \
    '{"args":[{"cmd":"get_data","channels":[0,3]}]}'
  korvaxctl query Hardware/BOARD '{"args":[{"cmd":"get_all_ch_values","param":"read_only"}]}'

By name: dumpers, oscilloscopes, high voltage, and the run commands, which are named "commands"
  korvaxctl query commands '{"cmd":"start_dump","run_id":"run42"}'

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const spectrumFooter = R"(A column shows the sum of its bins; all columns cover the same
number of bins. A rate is measured between two refreshes of --live. Events beyond either end are counted in
the first and the last bin: where these tower over the rest, --from and --to leave them out.

Examples:
  korvaxctl spectrum processing/0/filter_chain/main/chain/spectrum --live
  korvaxctl spectrum processing/0/filter_chain/main/chain/spectrum --channel 0,3 --log
  korvaxctl spectrum processing/0/filter_chain/main/chain/spectrum --from 600 --to 720

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const startFooter = R"(Example:
  korvaxctl start processing/0/filter_chain/main/chain/spectrum

Counts that are already there are kept. To start a board's read-out itself, name its source block:
  korvaxctl query commands '{"cmd":"start","endpoint":"SOURCE"}'

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const stopFooter = R"(Example:
  korvaxctl stop processing/0/filter_chain/main/chain/spectrum

The counts stay and can still be read. Other blocks go on counting.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const resetFooter = R"(Example:
  korvaxctl reset processing/0/filter_chain/main/chain/spectrum

Whether the block is counting or idle stays as it was.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const statusFooter = R"(Example:
  korvaxctl status processing/0/filter_chain/main/chain/spectrum

Prints one word: freerun (counting) or idle.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

}  // namespace korvax::client::help
