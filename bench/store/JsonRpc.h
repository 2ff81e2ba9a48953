// JSON-RPC over a Unix socket: values one after the other, with nothing between them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Bench {

/// Finds where values end, in what comes in pieces.
class JsonSplitter {
 public:
   /// Adds what has come.
   void add( std::string_view piece ) { text_.append( piece ); }

   /// The next whole value, valid until the next call; empty where there is none.
   std::string_view next();

 private:
   std::string text_;
   std::size_t begin_ = 0; // of the value that is looked at
   std::size_t seen_ = 0; // up to where it was looked at
   std::size_t depth_ = 0;
   bool inText_ = false;
   bool escaped_ = false;
};

class JsonConnection {
 public:
   explicit JsonConnection( const std::string & path );
   JsonConnection( const JsonConnection & ) = delete;
   JsonConnection & operator=( const JsonConnection & ) = delete;
   ~JsonConnection();

   int descriptor() const noexcept { return socket_; }
   void send( std::string_view text ) const;

   /// Reads once, which waits for something to come. False: the other side has gone.
   bool receive();

   /// The next whole value of those that have come; empty where there is none.
   std::string_view next() { return values_.next(); }

   /// The next value; waits for it.
   std::string_view await();

 private:
   int socket_;
   JsonSplitter values_;
};

} // namespace Bench
