#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <vector>

/// The search for repeated runs written down as plainly as its rules read, without a time budget:
/// what the program's builder is held against.
class PlainCycleBuilder {
public:
    struct found {
        std::vector<int> sequence;
        int count;
    };

    PlainCycleBuilder(std::vector<int> trace, std::set<int> menus)
        : mTrace(std::move(trace))
        , mLengths(mTrace.size(), 1)
        , mMenus(std::move(menus)) {}

    virtual ~PlainCycleBuilder() = default;

    /// All passes; the patterns of each branch in the order of their discovery.
    const std::map<int, std::vector<found>>& run() {
        int limit = static_cast<int>(mTrace.size()) / 8;
        if (limit <= 4)
            limit = 5;
        for (int distance = 2; distance < limit; ++distance)
            pass(distance);
        return mFound;
    }

    /// One pass; returns as `run` does.
    const std::map<int, std::vector<found>>& pass(int distance) {
        const int n = static_cast<int>(mTrace.size());
        if (distance >= n)
            return mFound;
        int i = 0;
        int j = distance;
        while (true) {
            const int length = lengthAt(i);
            if (indexAt(i) == indexAt(j) && isCycle(i, j)) {
                store(i, j);
                mLengths[static_cast<std::size_t>(i)] = j - i;
            }
            j = j + length;
            if (j >= n)
                return mFound;
            i = i + length;
        }
    }

protected:
    /// Merges a find into the patterns of its branch.
    virtual void merge(int branch, const std::vector<int>& sequence) {
        std::vector<found>& patterns = mFound[branch];
        const auto known = std::find_if(patterns.begin(), patterns.end(),
                                        [&](const found& f) { return f.sequence == sequence; });
        if (known == patterns.end())
            patterns.push_back({sequence, 0});
        else
            ++known->count;
    }

    int mFirst = 0; ///< Where the find that is merged begins.

private:
    int indexAt(int at) const { return mTrace[static_cast<std::size_t>(at)]; }

    int lengthAt(int at) const { return mLengths[static_cast<std::size_t>(at)]; }

    bool isCycle(int i, int j) const {
        const int v = indexAt(i);
        if (indexAt(j) != v)
            return false;
        if (indexAt(i + 1) == v)
            return false;
        if (indexAt(j - 1) == v)
            return false;
        int k = i + 1;
        while (k <= j - 1) {
            if (indexAt(k) != v)
                k = k + 1;
            else if (lengthAt(k) <= 1)
                return false;
            else
                k = k + lengthAt(k);
        }
        return true;
    }

    void store(int i, int j) {
        if (mMenus.contains(indexAt(i)))
            return;
        mFirst = i;
        merge(indexAt(i), {mTrace.begin() + i, mTrace.begin() + j + 1});
    }

    std::vector<int> mTrace;
    std::vector<int> mLengths;
    std::set<int> mMenus;
    std::map<int, std::vector<found>> mFound;
};
