// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/data_files.h"

#include <algorithm>
#include <utility>

#include "core/fault.h"

namespace corvid {

namespace {

constexpr std::size_t LengthBytes = 2;

std::int64_t PlaceOf(int32 record) {
  if (record < 1) throw Fault(FaultKind::Index, "Bad record number");
  return (std::int64_t{record} - 1) * static_cast<std::int64_t>(DataFiles::RecordSize);
}

std::size_t Byte(const std::string& bytes, std::size_t place) {
  return static_cast<unsigned char>(bytes[place]);
}

}  // namespace

DataFiles::DataFiles(ScriptFileState& state, const OptionsState& options, Files& files)
    : state_(state), options_(options), files_(files) {}

std::string DataFiles::PathOf(const std::string& name) const {
  return options_.UserDataFolder + name;
}

void DataFiles::Assign(int16 handle, const std::string& name, int16 length) {
  state_.ScriptFileName[handle] = name;
  state_.ScriptFileLength[handle] = length;
  state_.ScriptFileNumber[handle] = 0;
}

void DataFiles::Close(int16 handle) {
  if (!IsOpen(handle)) return;
  At(handle) = OpenFile{};
  state_.ScriptFileNumber[handle] = 0;
  state_.ScriptFileLength[handle] = 0;
}

bool DataFiles::AtEnd(int32 handle) {
  if (handle < 1 || handle > scriptfile::Handles) throw Fault(FaultKind::Index, "There is no such file number");
  OpenFile& file = At(static_cast<int16>(handle));
  if (file.Lines) return file.Lines->AtEnd();
  if (file.Records) return file.Behind >= file.Records->Size();
  return true;
}

void DataFiles::OpenForReading(int16 handle) {
  At(handle).Lines = std::make_unique<LineReader>(files_.OpenRead(PathOf(state_.ScriptFileName[handle])));
  state_.ScriptFileNumber[handle] = handle;
  state_.ScriptFileLength[handle] = scriptfile::Reading;
}

void DataFiles::OpenForWriting(int16 handle) {
  At(handle).End = files_.OpenAppend(PathOf(state_.ScriptFileName[handle]), Privacy::Shared);
  state_.ScriptFileNumber[handle] = handle;
  state_.ScriptFileLength[handle] = scriptfile::Writing;
}

bool DataFiles::NextLine(int16 handle, std::string& line) {
  LineReader& lines = *At(handle).Lines;
  if (lines.AtEnd()) return false;
  line = lines.Next();
  return true;
}

void DataFiles::AddText(int16 handle, const std::string& text) {
  // A script that learns of a full disk at the line that did not fit can still do something about it.
  AppendFile& end = *At(handle).End;
  end.Write(text);
  end.Flush();
}

DataFiles::OpenFile& DataFiles::OpenRecords(int16 handle) {
  OpenFile& file = At(handle);
  if (!file.Records) {
    file.Records = files_.OpenRandom(PathOf(state_.ScriptFileName[handle]));
    state_.ScriptFileNumber[handle] = handle;
  }
  return file;
}

std::string DataFiles::ReadRecord(int16 handle, int32 record) {
  const std::int64_t place = PlaceOf(record);
  OpenFile& file = OpenRecords(handle);
  const std::string bytes = file.Records->ReadAt(place, RecordSize);
  file.Behind = place + static_cast<std::int64_t>(RecordSize);
  if (bytes.size() < LengthBytes) return "";
  const std::size_t length = Byte(bytes, 0) + Byte(bytes, 1) * 256;
  if (length > LongestRecord) throw Fault(FaultKind::BadRecordLength, "Bad record length");
  return bytes.substr(LengthBytes, length);
}

void DataFiles::WriteRecord(int16 handle, int32 record, const std::string& text) {
  const std::int64_t place = PlaceOf(record);
  if (record > LastRecord) throw Fault(FaultKind::Index, "Bad record number");
  if (text.size() > LongestRecord) throw Fault(FaultKind::BadRecordLength, "Bad record length");
  OpenFile& file = OpenRecords(handle);
  // The whole record, so that nothing of a longer text before it stays readable.
  std::string bytes{static_cast<char>(text.size()), '\0'};
  bytes += text;
  bytes.resize(RecordSize, '\0');
  file.Records->WriteAt(place, bytes);
  file.Behind = place + static_cast<std::int64_t>(RecordSize);
}

}  // namespace corvid
