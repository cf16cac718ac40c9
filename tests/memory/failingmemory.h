#pragma once

/// Lets allocations of this program fail, those of its libraries included: `malloc`, `calloc`,
/// `realloc` and `operator new` are replaced in the program that links this file.
namespace failing_memory {

enum class Failures { Once, FromThenOn };

/// From now on `good` more allocations succeed and the next one, or each after it, fails. Counts
/// those of all threads that are not spared.
void begin(long good, Failures failures);

/// Whether an allocation has failed since `begin`.
bool hasFailed();

/// No allocation fails any more.
void end();

/// The calling thread's allocations are neither counted nor failed while this lives.
class Spared {
public:
    Spared();
    ~Spared();
    Spared(const Spared&) = delete;
    Spared& operator=(const Spared&) = delete;
};

} // namespace failing_memory
