// Streams of a host's own, over memory: one that behaves, one that comes short without a word, and one that
// breaks.
#ifndef K5AX_TESTS_MACHDEF_FILES_MEMORY_STREAM_H
#define K5AX_TESTS_MACHDEF_FILES_MEMORY_STREAM_H

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <k5ax/kinematics.h>
#include <k5ax/machdef.h>

#include "machdef/files/record_bytes.h"

namespace k5ax_test {

// Reads a block of bytes from its start, or writes one. Reading past the end is a FileError.
class MemoryStream : public IIO::Stream {
 public:
  MemoryStream() : m_mode(IIO::FILE_WRITE) {}
  explicit MemoryStream(Bytes bytes, IIO::FILE_MODE mode = IIO::FILE_READ)
      : m_mode(mode), m_bytes(std::move(bytes)) {}

  IIO::FILE_MODE Mode() const override { return m_mode; }
  void Write(const void* data, std::size_t size) override {
    sizes.push_back(size);
    m_bytes.append(static_cast<const char*>(data), size);
  }
  void Read(void* data, std::size_t size) override {
    sizes.push_back(size);
    if (m_bytes.size() - m_at < size) throw IIO::FileError("the memory ends here");
    std::memcpy(data, m_bytes.data() + m_at, size);
    m_at += size;
  }

  const Bytes& bytes() const { return m_bytes; }
  std::size_t position() const { return m_at; }

  std::vector<std::size_t> sizes;  // of every Write or Read, in order

 private:
  IIO::FILE_MODE m_mode;
  Bytes m_bytes;
  std::size_t m_at = 0;
};

// Past the end of its bytes it delivers nothing and does not say so.
class SilentStream : public IIO::Stream {
 public:
  explicit SilentStream(Bytes bytes) : m_bytes(std::move(bytes)) {}

  IIO::FILE_MODE Mode() const override { return IIO::FILE_READ; }
  void Write(const void*, std::size_t) override {}
  void Read(void* data, std::size_t size) override {
    const std::size_t count = std::min(size, m_bytes.size() - m_at);
    if (count > 0) std::memcpy(data, m_bytes.data() + m_at, count);
    m_at += count;
  }

 private:
  Bytes m_bytes;
  std::size_t m_at = 0;
};

// Leaves a part of its bytes out, as if they were lost, and does not say so: what is there keeps its value.
class GappyStream : public IIO::Stream {
 public:
  GappyStream(Bytes bytes, std::size_t gap_begin, std::size_t gap_end)
      : m_bytes(std::move(bytes)), m_gap_begin(gap_begin), m_gap_end(gap_end) {}

  IIO::FILE_MODE Mode() const override { return IIO::FILE_READ; }
  void Write(const void*, std::size_t) override {}
  void Read(void* data, std::size_t size) override {
    char* const to = static_cast<char*>(data);
    for (std::size_t i = 0; i < size; ++i, ++m_at)
      if (m_at < m_gap_begin || m_at >= m_gap_end) to[i] = m_bytes.at(m_at);
  }

 private:
  Bytes m_bytes;
  std::size_t m_gap_begin;
  std::size_t m_gap_end;
  std::size_t m_at = 0;
};

// What no library can know of.
struct HostsOwnError {
  int number;
};

// Does `allowed` calls as a MemoryStream, and then throws a HostsOwnError at every one.
class BreakingStream : public MemoryStream {
 public:
  explicit BreakingStream(int allowed) : m_allowed(allowed) {}
  BreakingStream(Bytes bytes, int allowed) : MemoryStream(std::move(bytes)), m_allowed(allowed) {}

  void Write(const void* data, std::size_t size) override {
    count();
    MemoryStream::Write(data, size);
  }
  void Read(void* data, std::size_t size) override {
    count();
    MemoryStream::Read(data, size);
  }

 private:
  void count() {
    if (m_allowed == 0) throw HostsOwnError{42};
    --m_allowed;
  }

  int m_allowed;
};

inline Bytes saved(md::CMachDef& machdef) {
  MemoryStream stream;
  machdef.serialize(stream);
  return stream.bytes();
}

inline void load(md::CMachDef& machdef, const Bytes& bytes) {
  MemoryStream stream(bytes);
  machdef.serialize(stream);
}

inline void load(md::CMachDef& machdef, const MachineRecord& record) { load(machdef, pack(record)); }

// Says at which offset two blocks of bytes part.
inline testing::AssertionResult same_bytes(const char* a_text, const char* b_text, const Bytes& a,
                                           const Bytes& b) {
  const auto parted = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  if (parted.first == a.end() && parted.second == b.end()) return testing::AssertionSuccess();
  const auto show = [](const Bytes& bytes, Bytes::const_iterator from) {
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (int i = 0; i < 8 && from != bytes.end(); ++i, ++from) {
      const auto byte = static_cast<unsigned char>(*from);
      text += digits[byte / 16];
      text += digits[byte % 16];
      text += ' ';
    }
    return text.empty() ? std::string("(the end)") : text;
  };
  return testing::AssertionFailure() << a_text << " (" << a.size() << " bytes) and " << b_text << " ("
                                     << b.size() << " bytes) part at offset " << parted.first - a.begin()
                                     << ": " << show(a, parted.first) << "against " << show(b, parted.second);
}

}  // namespace k5ax_test

#define EXPECT_SAME_BYTES(a, b) EXPECT_PRED_FORMAT2(::k5ax_test::same_bytes, a, b)
#define ASSERT_SAME_BYTES(a, b) ASSERT_PRED_FORMAT2(::k5ax_test::same_bytes, a, b)

#endif
