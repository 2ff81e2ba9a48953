// Measures the heap, how many bytes a piece of code held at most, and lets it run out or fail once.
// Linking HeapMeter.cpp replaces the global operator new and delete of the test program.
#pragma once

#include <cstddef>

namespace TestSupport {

/// Watches the heap from its construction on. Bytes are those that the allocator gave, which may be
/// a little more than were asked for; all threads count.
class HeapMeter {
 public:
   HeapMeter();

   /// The most bytes held at once since the construction, above those held then.
   std::size_t peak() const;

   /// The bytes held now above those held at the construction; 0 where there are fewer.
   std::size_t held() const;

 private:
   std::size_t base_;
};

/// While it lives, an allocation that would make the bytes held rise more than `more` above those
/// held at its construction throws std::bad_alloc. One at a time.
class HeapLimit {
 public:
   explicit HeapLimit( std::size_t more );
   ~HeapLimit();

   HeapLimit( const HeapLimit & ) = delete;
   HeapLimit & operator=( const HeapLimit & ) = delete;
};

/// While it lives, one allocation throws std::bad_alloc, or one and all that follow. One at a time.
class HeapFault {
 public:
   enum class Lasts {
      once,
      forGood
   };

   /// The `nth` allocation from now on fails; 1 is the next one.
   explicit HeapFault( std::size_t nth, Lasts lasts = Lasts::once );
   ~HeapFault();

   HeapFault( const HeapFault & ) = delete;
   HeapFault & operator=( const HeapFault & ) = delete;

   /// Whether there was an nth allocation.
   bool struck() const;
};

} // namespace TestSupport
