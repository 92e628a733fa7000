#include "runfiles/FileSummary.h"

#include <algorithm>
#include <utility>

namespace korvax::runfiles {
namespace {

std::uint64_t TimeOf(const ListRecord& record) {
  return record.timestamp;
}

std::uint64_t TimeOf(const WaveRecord& record) {
  return record.timestamp;
}

std::uint64_t TimeOf(const RateRecord& record) {
  return static_cast<std::uint64_t>(std::max<std::int64_t>(0, record.milliseconds));
}

std::string InWords(const ListRecord& record) {
  return "timestamp " + std::to_string(record.timestamp) + " ns, channel " + std::to_string(record.channel) +
         ", energy_raw " + std::to_string(record.energyRaw);
}

std::string InWords(const WaveRecord& record) {
  return "timestamp " + std::to_string(record.timestamp) + " ns, " + Counted(record.channels, "channel") + " of " +
         Counted(record.samples, "sample");
}

std::string InWords(const RateRecord& record) {
  return std::to_string(record.milliseconds) + " ms, " + Counted(record.ratesIn.size(), "channel");
}

void CountChannels(const ListRecord& record, FileSummary& summary) {
  const auto known = summary.perChannel.find(record.channel);
  if (known != summary.perChannel.end()) {
    ++known->second;
  } else if (summary.perChannel.size() < MostListedChannels) {
    summary.perChannel.emplace(record.channel, 1);
  } else {
    ++summary.onFurtherChannels;
  }
}

void CountChannels(const WaveRecord& record, FileSummary& summary) {
  summary.channels = std::max<std::size_t>(summary.channels, record.channels);
}

void CountChannels(const RateRecord& record, FileSummary& summary) {
  summary.channels = std::max(summary.channels, record.ratesIn.size());
}

template <typename Record>
void Add(const Record& record, FileSummary& summary) {
  const std::uint64_t time = TimeOf(record);
  const bool isFirst = summary.records == 0;
  summary.earliest = isFirst ? time : std::min(summary.earliest, time);
  summary.latest = isFirst ? time : std::max(summary.latest, time);
  if (isFirst) {
    summary.first = InWords(record);
  }
  CountChannels(record, summary);
  ++summary.records;
}

}  // namespace

double FileSummary::Seconds() const {
  const double ticks = static_cast<double>(latest - earliest);
  return type && type->kind == Kind::Rates ? ticks / 1e3 : ticks / 1e9;
}

std::optional<double> FileSummary::PerSecond(std::uint64_t count) const {
  return latest == earliest ? std::nullopt : std::optional(static_cast<double>(count) / Seconds());
}

FileSummary Summarise(const std::string& path) {
  FileSummary summary;
  const std::variant<FileType, FileFault> recognised = Recognise(path);
  if (const auto* fault = std::get_if<FileFault>(&recognised)) {
    summary.fault = *fault;
    return summary;
  }
  summary.type = std::get<FileType>(recognised);
  WithReader(path, *summary.type, [&summary]<typename Record>(RecordReader<Record>& reader) {
    Record record;
    Record last;
    while (reader.Next(record)) {
      Add(record, summary);
      std::swap(record, last);
    }
    summary.last = summary.records == 0 ? "" : InWords(last);
    summary.wholeBytes = reader.WholeBytes();
    summary.created = reader.Created();
    summary.fault = reader.Fault();
  });
  return summary;
}

}  // namespace korvax::runfiles
