// CArray and CMap against std::vector and std::unordered_map, measured in the same run.
// Prints one line per case with both times and the ratio (framework / standard; lower is better).
#include <afxtempl.h>
#include <stdio.h>
#include <algorithm>
#include <random>
#include <unordered_map>
#include <vector>

namespace {

const int kCount = 1000000;
const int kRounds = 5;

double Now()
{
    static LARGE_INTEGER freq = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return f;
    }();
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return static_cast<double>(t.QuadPart) * 1000.0 / static_cast<double>(freq.QuadPart);
}

// Best of kRounds runs, in milliseconds; the checksum keeps the work from being optimised away.
template <class F>
double Best(F&& run, long long& checksum)
{
    double best = 1e30;
    for (int r = 0; r < kRounds; ++r) {
        double t0 = Now();
        checksum += run();
        best = std::min(best, Now() - t0);
    }
    return best;
}

void Report(const char* what, double ours, const char* baseline, double theirs)
{
    printf("%-34s %8.2f ms   %-30s %8.2f ms   ratio %.2f\n", what, ours, baseline, theirs,
           ours / theirs);
}

} // namespace

int main()
{
    long long checksum = 0;

    double tArray = Best([] {
        CArray<int, int> a;
        for (int i = 0; i < kCount; ++i)
            a.Add(i);
        return static_cast<long long>(a[kCount / 2]);
    }, checksum);
    double tVector = Best([] {
        std::vector<int> v;
        for (int i = 0; i < kCount; ++i)
            v.push_back(i);
        return static_cast<long long>(v[kCount / 2]);
    }, checksum);
    Report("CArray<int>::Add x1e6", tArray, "std::vector::push_back", tVector);

    // Keys in a shuffled order, so neither container profits from sequential keys.
    std::vector<int> keys(kCount);
    for (int i = 0; i < kCount; ++i)
        keys[i] = i * 7;
    std::shuffle(keys.begin(), keys.end(), std::mt19937(12345));

    double tMapInsert = Best([&] {
        CMap<int, int, int, int> m;
        for (int k : keys)
            m[k] = k;
        return static_cast<long long>(m.GetCount());
    }, checksum);
    double tStdInsert = Best([&] {
        std::unordered_map<int, int> m;
        for (int k : keys)
            m[k] = k;
        return static_cast<long long>(m.size());
    }, checksum);
    Report("CMap<int,int,int,int> insert x1e6", tMapInsert, "std::unordered_map insert", tStdInsert);

    CMap<int, int, int, int> map;
    std::unordered_map<int, int> umap;
    for (int k : keys) {
        map[k] = k;
        umap[k] = k;
    }
    std::vector<int> probes(keys);
    std::shuffle(probes.begin(), probes.end(), std::mt19937(678));
    double tMapLookup = Best([&] {
        long long sum = 0;
        int v;
        for (int k : probes)
            if (map.Lookup(k, v))
                sum += v;
        return sum;
    }, checksum);
    double tStdLookup = Best([&] {
        long long sum = 0;
        for (int k : probes) {
            auto it = umap.find(k);
            if (it != umap.end())
                sum += it->second;
        }
        return sum;
    }, checksum);
    Report("CMap<int,int,int,int> lookup x1e6", tMapLookup, "std::unordered_map find", tStdLookup);

    printf("(checksum %lld)\n", checksum);
    return 0;
}
