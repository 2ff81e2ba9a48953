// TLS between a socket and who uses it. Part of Connection.cpp and Accepted.cpp.
#pragma once

#include "store/net/uv/Stream.h"
#include "store/net/uv/TlsState.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Vok::Store::Detail {

/// Whose bytes are protected. None of these destroys the filter.
class TlsUser : public StreamUser {
 public:
   /// Both sides have proved who they are: from now on bytes come and go.
   virtual void secured() = 0;

   /// TLS came to nothing, or to an end before its time. What is left to be sent tells the other
   /// side; nothing else comes or goes.
   virtual void unsecured( const std::string & why ) = 0;
};

/// What the stream is given to send is made when it asks, a few records at a time; what it has read
/// is handed on at once. So there is never more here than a record that has begun and the records
/// that are being sent.
class TlsFilter final : public StreamUser {
 public:
   /// `ssl` is ready to accept or to connect.
   TlsFilter( LoopState & loop, Ssl ssl, Stream & stream, TlsUser & user );
   TlsFilter( const TlsFilter & ) = delete;
   TlsFilter & operator=( const TlsFilter & ) = delete;

   /// The socket is connected: begins.
   void start();

   /// Tells the other side that nothing comes after what is to be sent.
   void finish();

   /// The common name in the other side's certificate; none where it has not one that can be shown.
   std::optional< std::string > commonName() const;

   // StreamUser
   void received( std::span< const std::byte > piece ) override;
   std::size_t outputs( std::span< std::span< const std::byte > > into ) override;
   void sent( std::size_t count ) override;
   void ended( const std::string & why ) override;

 private:
   static const BIO_METHOD * bioMethod();
   static int bioRead( BIO * bio, char * into, std::size_t size, std::size_t * count );
   static int bioWrite( BIO * bio, const char * from, std::size_t size, std::size_t * count );

   bool shakeHands();
   void read();
   void encrypt();
   std::size_t gather( std::span< std::byte > into );
   void fail();
   void fail( const std::string & why );

   LoopState & loop_;
   Stream & stream_;
   TlsUser & user_;
   Ssl ssl_;
   std::span< const std::byte > input_; // what OpenSSL has not yet taken of it
   std::vector< std::byte > made_; // by OpenSSL, to be sent next
   std::vector< std::byte > sending_;
   std::size_t sent_ = 0; // of it
   std::size_t handBytes_ = 0; // received before both sides have proved who they are
   bool secure_ = false;
   bool failed_ = false;
   bool finishing_ = false;
};

} // namespace Vok::Store::Detail
