// CPlex: the block allocator behind the node-based collections (CList, CMap).
// Nodes are carved out of blocks of nBlockSize elements; the blocks are freed together.
#pragma once
#include "afx.h"
#include <stdlib.h>

struct alignas(16) CPlex {
    CPlex* pNext;

    void* data() { return this + 1; }

    // Allocates a block of nMax elements of cbElement bytes and links it in front of head.
    static CPlex* PASCAL Create(CPlex*& head, UINT_PTR nMax, UINT_PTR cbElement)
    {
        if (nMax == 0 || cbElement == 0 || nMax > (SIZE_MAX - sizeof(CPlex)) / cbElement)
            AfxThrowInvalidArgException();
        CPlex* p = static_cast<CPlex*>(malloc(sizeof(CPlex) + nMax * cbElement));
        if (p == nullptr)
            AfxThrowMemoryException();
        p->pNext = head;
        head = p;
        return p;
    }

    // Frees this block and every block linked after it.
    void FreeDataChain()
    {
        CPlex* p = this;
        while (p != nullptr) {
            CPlex* next = p->pNext;
            free(p);
            p = next;
        }
    }
};
