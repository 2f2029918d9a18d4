// The keyword stream, read forward: the key lines of an input file (.nml) or a result file (.nlo)
// and the numbers behind them.
//
// The file is read in blocks of 1 MiB and may be larger than the memory. Offsets of key lines are
// kept while the file is open, so that a later search does not read again what lies between.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace base {
class Interaction;
}

namespace results {

// How the count of a run "n*value" is taken from its text.
enum class RepeatCount {
    rounded_16, // numeric prefix, rounded; above 32767 fails: cell sizes
    strict_32,  // a text that is no number fails: fields of the viewer and the histogram
    rounded_32, // numeric prefix, rounded: everywhere else
};

class StreamReader {
public:
    // FileFailure when the file cannot be opened or is no plain file.
    explicit StreamReader(const std::filesystem::path& file);
    ~StreamReader();
    StreamReader(StreamReader&&) noexcept;
    StreamReader& operator=(StreamReader&&) noexcept;

    const std::filesystem::path& file() const;
    std::uint64_t size() const;
    std::uint64_t position() const;
    bool at_end() const;
    // Bytes taken from the file so far, some of them more than once.
    std::uint64_t bytes_read() const;

    void rewind();
    // To a byte of the file; beyond its end, to its end.
    void go_to(std::uint64_t position);

    // Goes behind the next line that is `word` (blanks at its end do not count; on the last line of
    // the file more may follow). False: there is none, and the position is the end of the file.
    bool JumpToPos(std::string_view word);
    // Goes behind the next line that begins with `key`.
    bool find_prefix(std::string_view key);
    // The key line of the next block and goes behind it; nothing at the end of the file. At most
    // 200 characters of it.
    std::optional<std::string> next_key();

    // The rest of the present line without its end (CR LF or LF), at most `limit` bytes of it; goes
    // behind the whole line. Nothing at the end of the file.
    std::optional<std::string> next_line(std::size_t limit = 1000);
    // The integer of the next line, by its numeric prefix. FileFailure at the end of the file.
    int next_line_int(std::string_view what);

    // The next token: blanks, tabs, commas, CR and LF separate. One character behind a CR that ends
    // a token is dropped. FileFailure at the end of the file; `what` names what was expected.
    std::string InputNumber(std::string_view what);

    // FileFailure when the file is no longer the one that was opened: longer, shorter or written
    // to. Every reader of a block ends with it, so that no field mixes two runs.
    void require_unchanged() const;

private:
    friend class BlockReader;
    struct State;
    std::unique_ptr<State> state_;
};

// The values of one block, in the order of the stream: runs written out, tokens that are no number
// as 0. A run that is longer than what is asked for is dropped with the reader.
class BlockReader {
public:
    // `what` names the block in failures: "# TEMP". A bare CR counts as a separator only, unless
    // `drops_behind_cr`, which is how InputNumber takes its tokens.
    BlockReader(StreamReader& stream, RepeatCount repeat, std::string what, bool drops_behind_cr);

    // The next values into all of `values`. FileFailure, with the file's byte and the number of the
    // value, at the end of the file and for a bad repeat count.
    void read(std::span<float> values);
    // The same in double precision.
    void read(std::span<double> values);
    // Passes over `count` values with the same failures.
    void skip(std::uint64_t count);
    // Values of the last run that are not read yet.
    std::int64_t left_of_run() const { return pending_; }

private:
    template <class T>
    void fill(std::span<T> values);
    template <class T>
    std::size_t write_pending(std::span<T> values);
    template <class T>
    std::size_t read_plain(std::span<T> values);
    void take_item();
    std::int64_t count_of(std::string_view text, std::uint64_t byte) const;

    StreamReader* stream_;
    RepeatCount repeat_;
    std::string what_;
    bool drops_behind_cr_;
    std::uint64_t values_read_ = 0;
    std::int64_t pending_ = 0;
    double pending_value_ = 0;
};

// The key line of block `number` of a family: "# CONC" (18 characters in all) or "# CONCM" (19).
// Empty outside 1 to 99: such a block is never looked up.
std::string numbered_key(std::string_view keyword, int number);

// The search of the Result Viewer: JumpToPos with its message when the word is missing. Four words
// are missed silently: "# CONC", "# CONCM", "# ANZCHEM", "# ANZMINS".
bool jump_or_tell(StreamReader& stream, std::string_view word, base::Interaction& user);
// The search for what must be there: both messages when it is missing. The caller stops then.
bool LookForString(StreamReader& stream, std::string_view word, base::Interaction& user);

// Integer behind a counter's key line, searched from the beginning; 0 when it is missing (with the
// message of jump_or_tell).
int read_counter(StreamReader& stream, std::string_view word, base::Interaction& user);

} // namespace results
