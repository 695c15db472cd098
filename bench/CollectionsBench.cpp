// CArray and CMap against std::vector and std::unordered_map: appending, inserting and looking
// up 1,000,000 elements.
#include <afxtempl.h>
#include <algorithm>
#include <random>
#include <unordered_map>
#include <vector>
#include "KxBench.h"

KXBENCH_SINK

namespace {

const int kCount = 1000000;

}  // namespace

int main()
{
    using namespace KxBench;
    Header("CArray / CMap vs std::vector / std::unordered_map (best of 7, alternating)", "framework",
           "standard");

    Compare("CArray<int>::Add 1,000,000",
            [] {
                CArray<int, int> a;
                for (int i = 0; i < kCount; ++i)
                    a.Add(i);
                Keep(static_cast<size_t>(a[kCount / 2]));
            },
            [] {
                std::vector<int> v;
                for (int i = 0; i < kCount; ++i)
                    v.push_back(i);
                Keep(static_cast<size_t>(v[kCount / 2]));
            });

    // Keys in a shuffled order, so neither container profits from the order of insertion.
    std::vector<int> keys(kCount);
    for (int i = 0; i < kCount; ++i)
        keys[i] = i * 7;
    std::shuffle(keys.begin(), keys.end(), std::mt19937(12345));

    Compare("CMap<int,int,int,int> insert 1,000,000",
            [&] {
                CMap<int, int, int, int> m;
                for (int k : keys)
                    m[k] = k;
                Keep(static_cast<size_t>(m.GetCount()));
            },
            [&] {
                std::unordered_map<int, int> m;
                for (int k : keys)
                    m[k] = k;
                Keep(m.size());
            });

    CMap<int, int, int, int> map;
    std::unordered_map<int, int> umap;
    for (int k : keys) {
        map[k] = k;
        umap[k] = k;
    }
    std::vector<int> probes(keys);
    for (int i = 0; i < kCount; i += 2)
        probes[i] += 1; // every other probe misses
    std::shuffle(probes.begin(), probes.end(), std::mt19937(678));

    Compare("CMap<int,int,int,int> lookup 1,000,000",
            [&] {
                size_t sum = 0;
                int v;
                for (int k : probes)
                    if (map.Lookup(k, v))
                        sum += static_cast<size_t>(v);
                Keep(sum);
            },
            [&] {
                size_t sum = 0;
                for (int k : probes) {
                    auto it = umap.find(k);
                    if (it != umap.end())
                        sum += static_cast<size_t>(it->second);
                }
                Keep(sum);
            });
    return 0;
}
