#include "zro/dom/internal/NodeSlab.h"

#include <array>
#include <atomic>
#include <cassert>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <utility>

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kPageBytes = std::size_t{32} * 1024;
constexpr std::size_t kPagesInRegion = 32;
constexpr std::size_t kRegionBytes = kPageBytes * kPagesInRegion;
constexpr std::size_t kSpareRegions = 64;  // entirely free ones that are kept
constexpr std::size_t kGranule = 8;  // sizes that are a multiple of 16 get blocks aligned to 16
constexpr std::size_t kSizes = NodeSlab::kLargestBlock / kGranule;
constexpr std::size_t kBatch = 64;  // foreign blocks that a thread collects

class Heap;
struct Region;

struct Block {
    Block* next;
};

/// The head of a page; its blocks follow up to the next multiple of the page size.
struct Page {
    std::atomic<Heap*> owner{nullptr};  // null once the thread has ended
    Region* region = nullptr;
    Block* free = nullptr;
    std::byte* uncut = nullptr;  // behind the blocks that were out already
    std::uint32_t blockSize = 0;
    std::uint32_t live = 0;  // blocks out, those on `returned` included
    bool isFull = false;     // which of the owner's lists it is in
    Page* next = nullptr;
    Page* previous = nullptr;
    // Under the pool's lock: blocks that other threads freed.
    Block* returned = nullptr;
    std::uint32_t returnedCount = 0;
    Page* nextReturned = nullptr;
    Page* nextCollected = nullptr;  // the owner's own, for what it has collected

    /// A block that was free, or the next one in the order of addresses; null when the page is
    /// full.
    void* take() {
        void* block = free;
        if (block != nullptr) {
            free = free->next;
        } else if (uncut + blockSize <= reinterpret_cast<std::byte*>(this) + kPageBytes) {
            block = std::exchange(uncut, uncut + blockSize);
        } else {
            return nullptr;
        }
        ++live;
        return block;
    }

    /// Of a page without blocks out: they come in the order of addresses again.
    void startAnew() {
        free = nullptr;
        uncut = reinterpret_cast<std::byte*>(this) + kPageHead;
    }

    static constexpr std::size_t kPageHead = 128;
};
static_assert(sizeof(Page) <= Page::kPageHead);

Page& pageOf(void* memory) {
    const std::size_t inside = reinterpret_cast<std::uintptr_t>(memory) & (kPageBytes - 1);
    void* const start = static_cast<std::byte*>(memory) - inside;
    return *static_cast<Page*>(start);
}

/// A list of pages that a page can leave from anywhere.
class PageList {
public:
    Page* front() const { return m_front; }
    void pushFront(Page& page) {
        page.previous = nullptr;
        page.next = m_front;
        if (m_front != nullptr) {
            m_front->previous = &page;
        }
        m_front = &page;
    }
    /// Behind the first page, which stays the one that blocks are taken from.
    void pushSecond(Page& page) {
        if (m_front == nullptr) {
            pushFront(page);
            return;
        }
        page.previous = m_front;
        page.next = m_front->next;
        if (page.next != nullptr) {
            page.next->previous = &page;
        }
        m_front->next = &page;
    }
    void remove(Page& page) {
        (page.previous != nullptr ? page.previous->next : m_front) = page.next;
        if (page.next != nullptr) {
            page.next->previous = page.previous;
        }
    }

private:
    Page* m_front = nullptr;
};

/// What the pages are cut from.
struct Region {
    std::byte* memory = nullptr;
    Page* freePages = nullptr;
    std::size_t freeCount = 0;
    Region* next = nullptr;  // in the pool's list, as long as there are free pages
    Region* previous = nullptr;
};

/// The pages that no thread has. Everything here runs under its lock.
class Pool {
public:
    std::mutex& lock() { return m_lock; }
    void* takePage();
    void givePage(Page& page);
    void freeSpareRegions(std::size_t keep);
    std::size_t reservedBytes() const { return m_regions * kRegionBytes; }

private:
    void addRegion();
    void linkFirst(Region& region);
    void linkLast(Region& region);
    void unlink(Region& region);

    std::mutex m_lock;
    Region* m_first = nullptr;  // with free pages; entirely free ones stand last
    Region* m_last = nullptr;
    std::size_t m_regions = 0;
    std::size_t m_spare = 0;
};

// Not destroyed: static objects of the host may free their nodes after ours are gone.
constinit Pool s_pool;

void* Pool::takePage() {
    if (m_first == nullptr) {
        addRegion();
    }
    Region& region = *m_first;
    m_spare -= region.freeCount == kPagesInRegion ? 1 : 0;
    Page* page = region.freePages;
    region.freePages = page->next;
    if (--region.freeCount == 0) {
        unlink(region);
    }
    return page;
}

void Pool::addRegion() {
    auto region = std::make_unique<Region>();
    region->memory =
        static_cast<std::byte*>(::operator new (kRegionBytes, std::align_val_t{kPageBytes}));
    for (std::size_t i = kPagesInRegion; i-- > 0;) {
        auto* page = new (region->memory + i * kPageBytes) Page;
        page->region = region.get();
        page->next = region->freePages;
        region->freePages = page;
    }
    region->freeCount = kPagesInRegion;
    ++m_regions;
    ++m_spare;
    linkFirst(*region.release());
}

void Pool::givePage(Page& page) {
    Region& region = *page.region;
    page.next = region.freePages;
    region.freePages = &page;
    if (++region.freeCount == 1) {
        linkFirst(region);
    }
    if (region.freeCount == kPagesInRegion) {
        unlink(region);
        linkLast(region);
        ++m_spare;
        freeSpareRegions(kSpareRegions);
    }
}

void Pool::freeSpareRegions(std::size_t keep) {
    for (; m_spare > keep; --m_spare) {
        const std::unique_ptr<Region> region(m_last);
        assert(region->next == nullptr);
        unlink(*region);
        ::operator delete (region->memory, std::align_val_t{kPageBytes});
        --m_regions;
    }
}

void Pool::linkFirst(Region& region) {
    region.previous = nullptr;
    region.next = m_first;
    (m_first != nullptr ? m_first->previous : m_last) = &region;
    m_first = &region;
}

void Pool::linkLast(Region& region) {
    region.next = nullptr;
    region.previous = m_last;
    (m_last != nullptr ? m_last->next : m_first) = &region;
    m_last = &region;
}

void Pool::unlink(Region& region) {
    (region.previous != nullptr ? region.previous->next : m_first) = region.next;
    (region.next != nullptr ? region.next->previous : m_last) = region.previous;
}

/// The pages of one thread.
class Heap {
public:
    Heap() = default;
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;
    ~Heap();

    Page* openPage(std::size_t index) const { return m_open[index].front(); }
    // What comes seldom stays out of the way of what comes always.
    [[gnu::noinline]] void* allocateSlowly(std::size_t index);
    [[gnu::noinline]] void noteFreed(Page& page);
    void freeForeign(Block* block);
    void dropEmptyPages();

    // Under the pool's lock.
    void addReturned(Page& page);

private:
    Page& newPage(std::size_t index);
    void collectReturned();
    void flushForeign();
    static std::size_t indexOf(const Page& page) { return page.blockSize / kGranule - 1; }

    std::array<PageList, kSizes> m_open;  // pages with free blocks, and the first of them
    std::array<PageList, kSizes> m_full;
    std::array<Block*, kBatch> m_foreign{};
    std::size_t m_foreignCount = 0;
    std::atomic<bool> m_hasReturned{false};
    Page* m_returned = nullptr;  // under the pool's lock
};

/// Gives blocks back to the pages of other threads.
void returnBlocks(std::span<Block* const> blocks) {
    const std::lock_guard guard(s_pool.lock());
    for (Block* block : blocks) {
        Page& page = pageOf(block);
        if (Heap* owner = page.owner.load(std::memory_order_relaxed)) {
            block->next = std::exchange(page.returned, block);
            if (++page.returnedCount == 1) {
                owner->addReturned(page);
            }
        } else if (--page.live == 0) {
            s_pool.givePage(page);
        }
    }
}

/// What a thread that has ended leaves behind. Under the pool's lock.
void abandon(PageList& pages) {
    while (Page* page = pages.front()) {
        pages.remove(*page);
        page->owner.store(nullptr, std::memory_order_relaxed);
        page->live -= std::exchange(page->returnedCount, 0);
        page->returned = nullptr;
        if (page->live == 0) {
            s_pool.givePage(*page);
        }
    }
}

Heap::~Heap() {
    flushForeign();
    const std::lock_guard guard(s_pool.lock());
    for (std::size_t index = 0; index < kSizes; ++index) {
        abandon(m_open[index]);
        abandon(m_full[index]);
    }
}

void* Heap::allocateSlowly(std::size_t index) {
    if (m_hasReturned.load(std::memory_order_relaxed)) {
        collectReturned();
    }
    while (Page* page = m_open[index].front()) {
        if (void* block = page->take()) {
            return block;
        }
        m_open[index].remove(*page);
        m_full[index].pushFront(*page);
        page->isFull = true;
    }
    return newPage(index).take();
}

Page& Heap::newPage(std::size_t index) {
    void* memory = nullptr;
    {
        const std::lock_guard guard(s_pool.lock());
        memory = s_pool.takePage();
    }
    Region* region = static_cast<Page*>(memory)->region;
    Page& page = *new (memory) Page;
    page.owner.store(this, std::memory_order_relaxed);
    page.region = region;
    page.blockSize = static_cast<std::uint32_t>((index + 1) * kGranule);
    page.startAnew();
    m_open[index].pushFront(page);
    return page;
}

/// A block came back, and the page was full before or is empty now.
void Heap::noteFreed(Page& page) {
    const std::size_t index = indexOf(page);
    if (page.isFull) {
        page.isFull = false;
        m_full[index].remove(page);
        m_open[index].pushSecond(page);
    }
    if (page.live != 0) {
        return;
    }
    if (&page == m_open[index].front()) {
        page.startAnew();
        return;
    }
    m_open[index].remove(page);
    const std::lock_guard guard(s_pool.lock());
    s_pool.givePage(page);
}

void Heap::addReturned(Page& page) {
    page.nextReturned = std::exchange(m_returned, &page);
    m_hasReturned.store(true, std::memory_order_relaxed);
}

void Heap::collectReturned() {
    Page* pages = nullptr;
    {
        const std::lock_guard guard(s_pool.lock());
        pages = std::exchange(m_returned, nullptr);
        m_hasReturned.store(false, std::memory_order_relaxed);
        for (Page* page = pages; page != nullptr; page = page->nextReturned) {
            page->nextCollected = page->nextReturned;  // which others may set again from now on
            page->live -= std::exchange(page->returnedCount, 0);
            for (Block* block = std::exchange(page->returned, nullptr); block != nullptr;) {
                Block* next = block->next;
                block->next = std::exchange(page->free, block);
                block = next;
            }
        }
    }
    while (pages != nullptr) {
        Page& page = *std::exchange(pages, pages->nextCollected);
        noteFreed(page);
    }
}

void Heap::freeForeign(Block* block) {
    m_foreign[m_foreignCount++] = block;
    if (m_foreignCount == kBatch) {
        flushForeign();
    }
}

void Heap::flushForeign() {
    returnBlocks(std::span(m_foreign.data(), std::exchange(m_foreignCount, 0)));
}

void Heap::dropEmptyPages() {
    flushForeign();
    collectReturned();
    const std::lock_guard guard(s_pool.lock());
    for (PageList& pages : m_open) {
        Page* page = pages.front();
        if (page != nullptr && page->live == 0) {
            pages.remove(*page);
            s_pool.givePage(*page);
        }
    }
}

thread_local constinit Heap* t_heap = nullptr;
thread_local constinit bool t_hasEnded = false;

struct EndOfThread {
    EndOfThread() = default;
    EndOfThread(const EndOfThread&) = delete;
    EndOfThread& operator=(const EndOfThread&) = delete;
    ~EndOfThread() {
        const std::unique_ptr<Heap> heap(std::exchange(t_heap, nullptr));
        t_hasEnded = true;
    }
    void arm() const {}
};
thread_local EndOfThread t_endOfThread;

/// The heap of this thread, made when needed; null when there is no memory for one.
Heap* threadHeap() noexcept {
    if (t_heap == nullptr) {
        t_heap = new (std::nothrow) Heap;
        if (!t_hasEnded) {  // static objects that die later get a heap which nobody ends
            t_endOfThread.arm();
        }
    }
    return t_heap;
}

[[gnu::noinline]] void* allocateSlowly(std::size_t size) {
    if (size - 1 >= NodeSlab::kLargestBlock) {
        return ::operator new(size);
    }
    Heap* heap = threadHeap();
    if (heap == nullptr) {
        throw std::bad_alloc();
    }
    return heap->allocateSlowly((size - 1) / kGranule);
}

/// Of a block that this thread did not take from a page of its own.
[[gnu::noinline]] void freeSlowly(void* memory) noexcept {
    auto* block = new (memory) Block{nullptr};
    Heap* heap = t_hasEnded ? nullptr : threadHeap();
    if (heap == nullptr) {
        returnBlocks(std::span(&block, 1));
        return;
    }
    heap->freeForeign(block);
}

}  // namespace

void* NodeSlab::allocate(std::size_t size) {
    if (size - 1 < kLargestBlock && t_heap != nullptr) {
        Page* page = t_heap->openPage((size - 1) / kGranule);
        void* block = page != nullptr ? page->take() : nullptr;
        if (block != nullptr) {
            return block;
        }
    }
    return allocateSlowly(size);
}

void NodeSlab::free(void* memory, std::size_t size) noexcept {
    if (size - 1 >= kLargestBlock || memory == nullptr) {
        ::operator delete(memory);
        return;
    }
    Page& page = pageOf(memory);
    Heap* heap = t_heap;
    if (heap == nullptr || page.owner.load(std::memory_order_relaxed) != heap) {
        return freeSlowly(memory);
    }
    page.free = new (memory) Block{page.free};
    if (--page.live == 0 || page.isFull) {
        heap->noteFreed(page);
    }
}

void NodeSlab::trim() noexcept {
    if (t_heap != nullptr) {
        t_heap->dropEmptyPages();
    }
    const std::lock_guard guard(s_pool.lock());
    s_pool.freeSpareRegions(0);
}

std::size_t NodeSlab::reservedBytes() noexcept {
    const std::lock_guard guard(s_pool.lock());
    return s_pool.reservedBytes();
}

}  // namespace ZroCommon::internal
