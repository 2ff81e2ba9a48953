// Counters that all change, told to another process over a Unix socket: what each contender of
// CountersBench is. Most of them have a reader, a process that this one forks.
#pragma once

#include "bench/changes/ChangingTable.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include <sys/types.h>

namespace Bench::Counters {

using Changes::firstOf;
using Changes::Traffic;

/// A member's part of the digest of a table, which is their sum.
constexpr std::uint64_t digestOf( std::uint32_t number, const Traffic & traffic )
{
   return ( traffic.packets ^ number * 0x9e3779b97f4a7c15 ) * 0xbf58476d1ce4e5b9 + traffic.bytes;
}

class Writer {
 public:
   Writer() = default;
   Writer( const Writer & ) = delete;
   Writer & operator=( const Writer & ) = delete;
   virtual ~Writer() = default;

   virtual void change( std::uint32_t number, const Traffic & traffic ) = 0;

   /// Sends what has changed.
   virtual void flush() = 0;

   /// Sends the rest, and returns once the other process has all.
   virtual void settle() = 0;

   /// Nanoseconds of the processor's time that the other process has taken.
   virtual std::uint64_t elsewhere() const = 0;

   /// Whether the other process has what was written.
   virtual bool alike() = 0;
};

/// What a reader does with the messages that it gets.
class Reader {
 public:
   virtual ~Reader() = default;
   virtual void apply( const std::byte * data, std::size_t size ) = 0;
   virtual std::uint64_t digest() const = 0;
};

/// Another process that reads messages, and the socket to it. It ends with the object.
class ReaderProcess {
 public:
   explicit ReaderProcess( const std::function< std::unique_ptr< Reader >() > & make );
   ReaderProcess( const ReaderProcess & ) = delete;
   ReaderProcess & operator=( const ReaderProcess & ) = delete;
   ~ReaderProcess();

   void send( const void * data, std::size_t size );

   /// Returns once all that was sent is applied.
   void settle() { ask( settled ); }
   std::uint64_t digest() { return ask( digested ); }
   std::uint64_t processorTime() const;

 private:
   // Lengths of messages that are questions.
   static constexpr std::uint64_t settled = 0;
   static constexpr std::uint64_t digested = ~std::uint64_t{ 0 };

   [[noreturn]] void read( Reader & reader ) const;
   std::uint64_t ask( std::uint64_t question );

   int socket_;
   pid_t pid_;
};

/// Makes a contender's writer of so many members, numbered from 1; the other process has all.
using Make = std::unique_ptr< Writer > ( * )( std::uint32_t members );

std::unique_ptr< Writer > values( std::uint32_t members );
std::unique_ptr< Writer > entities( std::uint32_t members );
std::unique_ptr< Writer > loggedByHand( std::uint32_t members );
std::unique_ptr< Writer > coalescedByHand( std::uint32_t members );
/// Ends the program where Redis is not installed: ask `hasRedis()` first.
std::unique_ptr< Writer > redis( std::uint32_t members );
bool hasRedis();

} // namespace Bench::Counters
