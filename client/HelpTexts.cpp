#include "client/HelpTexts.h"

namespace korvax::client::help {

const char* const description =
    "korvaxctl talks to a running korvax-boards-server: it sends queries, lists blocks, draws spectra, maps and\n"
    "waveforms in the terminal, shows rates, starts, stops and resets counting, records runs, switches high\n"
    "voltage and tells what became of every record. It also reads, verifies and recovers the list, wave and rate\n"
    "files of a run, and checks configuration files.";

const char* const footer = R"(Examples:
  korvaxctl blocks
  korvaxctl query processing/0/filter_chain/board0/chain/spectrum0 '{"args":[{"cmd":"data_get_status"}]}'
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --live
  korvaxctl start processing/0/filter_chain/board0/chain/spectrum0
  korvaxctl stop processing/0/filter_chain/board0/chain/spectrum0
  korvaxctl reset processing/0/filter_chain/board0/chain/spectrum0
  korvaxctl status processing/0/filter_chain/board0/chain/spectrum0
  korvaxctl times processing/0/filter_chain/board1/chain/times1 --live
  korvaxctl position processing/0/filter_chain/board1/chain/position1 --live
  korvaxctl image processing/0/filter_chain/board0/chain/image0 --live
  korvaxctl scope scope1 --live
  korvaxctl rates processing/0/filter_chain/rates1/chain/rates1 --live
  korvaxctl run start first
  korvaxctl run info
  korvaxctl run stop
  korvaxctl hv hv1 show
  korvaxctl ledger
  korvaxctl files summary demo-storage/first
  korvaxctl files verify demo-storage/first
  korvaxctl check examples/demo.json

Every command takes --host, --port and --timeout, before or after its name, and --help.

Exit codes:
  0  done
  1  the output can't be written
  2  the command line can't be understood
  3  no server at the address, or it went away before it answered
  4  empty answer: wrong path or name, or a block that this route doesn't serve
  5  no answer within the time-out
  6  the answer isn't of the kind that the command needs
  7  the block is there but has no answer to this query
  8  a file is not as it should be, or can't be read
  9  refused: such a run exists already, a run is being recorded, no board is connected
 10  an account of records doesn't balance)";

const char* const queryFooter = R"(A target with a "/" in it is a full path, any other is
the name of a block. The answer is printed as it came.

By full path: spectra
  korvaxctl query processing/0/filter_chain/board0/chain/spectrum0 \
    '{"args":[{"cmd":"get_data","channels":[0,3]}]}'

By name: "commands", dumpers and oscilloscopes
  korvaxctl query commands '{"cmd":"get_run_info"}'
  korvaxctl query dumper1 '{"cmd":"set_dump_events","dump_events":100000}'

Either way: high voltage
  korvaxctl query Hardware/BOARD1 '{"args":[{"cmd":"get_all_ch_values","param":"read_only"}]}'

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const blocksFooter = R"(Lists in the order of the server's configuration each block that it made:
the name and the full path by which queries reach it, for each input the block and the output that it takes
from, counted from 0, and its sizes or what it is bound to, as it works with them.

Examples:
  korvaxctl blocks
  korvaxctl blocks --json

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const spectrumFooter = R"(A column shows the sum of its bins; all columns cover the same
number of bins. A rate is measured between two refreshes of --live. Events beyond either end are counted in
the first and the last bin: where these tower over the rest, --from and --to leave them out.

Examples:
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --live
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --channel 0,3 --log
  korvaxctl spectrum processing/0/filter_chain/board0/chain/spectrum0 --from 600 --to 720

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const timesFooter = R"(As korvaxctl spectrum, for blocks of the type "tof_histogram". A bin is as
many units of time wide as "binning" in the server's configuration says; events beyond the last bin are
counted in it. These blocks count whether they have been started or not.

Examples:
  korvaxctl times processing/0/filter_chain/board1/chain/times1 --live
  korvaxctl times processing/0/filter_chain/board1/chain/times1 --channel 0,3 --from 10 --to 500

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const positionFooter =
    R"(A column is a strip; a row is a place along it, the share of the energy that the
channel with the lower number saw: row 0, at the top, is none of it. Where rows or columns don't fit, a cell
shows the sum of several. Below the map stands from which count on each colour is used; no colour, black or
blank, is no count.

Colours are used on a terminal; --no-colour or a NO_COLOR in the environment turns them off.

Examples:
  korvaxctl position processing/0/filter_chain/board1/chain/position1
  korvaxctl position processing/0/filter_chain/board1/chain/position1 --live --log

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const imageFooter =
    R"(Shows the counts since the last reset or, with --immediate, those since the immediate
image was last read. Reading the immediate image empties it for every client, and a reset leaves it.

Where rows or columns don't fit, a cell shows the sum of several. Below the image stands from which count on
each colour is used; no colour, black or blank, is no count. Colours are used on a terminal; --no-colour or
a NO_COLOR in the environment turns them off.

Examples:
  korvaxctl image processing/0/filter_chain/board0/chain/image0 --live
  korvaxctl image processing/0/filter_chain/board0/chain/image0 --live --immediate --interval 5

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const scopeFooter = R"(The lines show, column by column, the lowest to the highest of the
analog samples; below them one line a digital trace: ▁ low, █ high, ▒ both within the column.

The oscilloscope has one list of enabled channels for all its clients: this command enables the channels
that it draws and disables all others, also for anyone else who reads the same oscilloscope.

Examples:
  korvaxctl scope scope1
  korvaxctl scope scope1 --channel 0,3 --live

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const ratesFooter = R"(Rates in and out are events per second, as the board measured them.
The bars show the rate in: in proportion to the largest one, or with --log from 0.1/s up. T0 is the last
channel of the record.

Examples:
  korvaxctl rates processing/0/filter_chain/rates1/chain/rates1
  korvaxctl rates processing/0/filter_chain/rates1/chain/rates1 --live --log

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const startFooter = R"(Example:
  korvaxctl start processing/0/filter_chain/board0/chain/spectrum0

Counts that are already there are kept.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const stopFooter = R"(Example:
  korvaxctl stop processing/0/filter_chain/board0/chain/spectrum0

The counts stay and can still be read. Other blocks go on counting; a time distribution goes on, too,
whatever its status says.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const resetFooter = R"(Example:
  korvaxctl reset processing/0/filter_chain/board0/chain/spectrum0

Whether the block is counting or idle stays as it was. Of an image block, the cumulative image is reset and
the immediate one left as it is.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const statusFooter = R"(Example:
  korvaxctl status processing/0/filter_chain/board0/chain/spectrum0

Prints one word: freerun (counting) or idle. A time distribution counts either way.

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const runFooter =
    R"(A run is recorded into a folder of its own, named by ID, in the storage folder of the
server's configuration, which also says what is recorded. A stop takes effect when the next events arrive.

Where it would spoil files, a command is refused unless --force is there: start while a dumper records, as
the new run would go on in the open file; pause when none records; restart when a dumper is stopped, as it
would write over the files of its last run.

Examples:
  korvaxctl run start first
  korvaxctl run pause
  korvaxctl run restart
  korvaxctl run info
  korvaxctl run stop

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const hvFooter =
    R"(A block with a "/" in it is a full path, any other a name. show prints the values as the board
gives them. on and off send the board's own switch command and then its whole configuration; the server
doesn't tell whether the board obeyed: show does.

Examples:
  korvaxctl hv hv1 show
  korvaxctl hv Hardware/BOARD1 on
  korvaxctl hv hv1 off

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const ledgerFooter =
    R"(The server keeps an account of every record in every block. A row tells how many records a
block received (a source: entries of the board), how many wait within it and in the queues before it, how many
records it made, pushed to each of its outputs and dropped there because the queue was full, and what became of
those it received. The last line says whether all this balances, and what is lost.

What is lost, or doesn't fit, stands in red on a terminal; elsewhere, or with a NO_COLOR in the environment,
behind a "!". While records flow, the account is read a few times, and what blocks have in hand is told.
The exit code is 10 when the account doesn't balance; losses that are accounted for don't change it.

Examples:
  korvaxctl ledger
  korvaxctl ledger --json

See korvaxctl --help for --host, --port, --timeout and the exit codes.)";

const char* const verifyFooter =
    R"(Compares the files of a run with run.summary, which the server wrote beside them: size and checksum
of each file; files that are missing or were not ended, with the whole records in them; whether the run was
ended, and what it lost. The exit code is 0 when all is as it was written, 8 when a file or the run isn't or
there is no summary, 10 when the files are well but the run's account of records doesn't balance.

Example:
  korvaxctl files verify demo-storage/first

See korvaxctl --help for the exit codes.)";

const char* const recoverFooter =
    R"(Copies a file up to the end of its last whole record into the new file OUT, which must have the same
ending (.bin, .csv, .json); FILE stays as it is. An array of JSON is closed. Nothing is written over, and
nothing is written when FILE doesn't begin as a run file does.

Example:
  korvaxctl files recover demo-storage/first/dumper1_0.bin recovered.bin

See korvaxctl --help for the exit codes.)";

const char* const filesFooter =
    R"(Reads list, wave and rate files of this machine; a folder stands for all of these in it. check says at
which byte a file breaks off and how many whole records stand before it. csv joins files of one kind, and
writes over no file that is there already. verify compares a run with its run.summary, recover copies what is
whole of a file.

Examples:
  korvaxctl files summary demo-storage/first
  korvaxctl files check demo-storage/first
  korvaxctl files csv demo-storage/first/dumper1_0.bin --output events.csv
  korvaxctl files verify demo-storage/first
  korvaxctl files recover demo-storage/first/dumper1_0.bin recovered.bin

See korvaxctl --help for the exit codes.)";

const char* const checkFooter =
    R"(Looks at a file as the server would, without starting anything: no board is connected, no folder looked for.
Each finding is a line: FILE:LINE: error or warning: where it is, what was expected and what stands there.
Errors are what the server refuses, or reads as something else. Warnings are what it takes, but perhaps not as
it was meant; with warnings alone the exit code is 0.

Examples:
  korvaxctl check examples/demo.json
  korvaxctl check --schema

See korvaxctl --help for the exit codes.)";

}  // namespace korvax::client::help
