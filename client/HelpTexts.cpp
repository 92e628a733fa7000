#include "client/HelpTexts.h"

namespace korvax::client::help {

const char* const description =
    "korvaxctl talks to a running korvax-boards-server: it sends queries, draws spectra in the terminal,\n"
    "and starts, stops and resets counting.";

const char* const footer = R"(Examples:
  korvaxctl query processing/0/filter_chain/board0/chain/spectrum0 '{"args":[{"cmd":"data_get_status"}]}'
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --live
  korvaxctl start processing/0/filter_chain/board0/chain/spectrum0
  korvaxctl stop processing/0/filter_chain/board0/chain/spectrum0
  korvaxctl reset processing/0/filter_chain/board0/chain/spectrum0
  korvaxctl status processing/0/filter_chain/board0/chain/spectrum0

Every command takes --host, --port and --timeout, before or after its name, and --help.

Exit codes:
  0  done
  1  the output can't be written
  2  the command line can't be understood
  3  no server at the address, or it went away before it answered
  4  empty answer: wrong path or name, or a block that this route doesn't serve
  5  no answer within the time-out
  6  the answer isn't of the kind that the command needs
  7  the block is there but has no answer to this query)";

const char* const queryFooter = R"(A target with a "/" in it is a full path, any other is
the name of a block. The answer is printed as it came.

By full path: spectra
  korvaxctl query processing/0/filter_chain/board0/chain/spectrum0 \
    '{"args":[{"cmd":"get_data","channels":[0,3]}]}'

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const spectrumFooter = R"(A column shows the sum of its bins; all columns cover the same
number of bins. A rate is measured between two refreshes of --live. Events beyond either end are counted in
the first and the last bin: where these tower over the rest, --from and --to leave them out.

Examples:
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --live
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --channel 0,3 --log
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --from 600 --to 720

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const startFooter = R"(Example:
  korvaxctl start processing/0/filter_chain/board0/chain/spectrum0

Counts that are already there are kept.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const stopFooter = R"(Example:
  korvaxctl stop processing/0/filter_chain/board0/chain/spectrum0

The counts stay and can still be read. Other blocks go on counting.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const resetFooter = R"(Example:
  korvaxctl reset processing/0/filter_chain/board0/chain/spectrum0

Whether the block is counting or idle stays as it was.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const statusFooter = R"(Example:
  korvaxctl status processing/0/filter_chain/board0/chain/spectrum0

Prints one word: freerun (counting) or idle.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

}  // namespace korvax::client::help
