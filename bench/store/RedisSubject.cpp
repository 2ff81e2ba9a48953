// Redis: a hash for each member, and a message to a channel for each change. A reader subscribes,
// takes all hashes over a second connection, and applies the messages to a map of its own.
#include "bench/Check.h"
#include "bench/store/Polling.h"
#include "bench/store/Process.h"
#include "bench/store/Subject.h"

#include <hiredis.h>

#include <charconv>
#include <initializer_list>
#include <string_view>
#include <unordered_map>

namespace Bench {
namespace {

struct Free {
   void operator()( redisContext * context ) const noexcept { redisFree( context ); }
   void operator()( redisReply * reply ) const noexcept { freeReplyObject( reply ); }
};
using Context = std::unique_ptr< redisContext, Free >;
using Reply = std::unique_ptr< redisReply, Free >;

constexpr const char * channel = "flows";

Context connectTo( const std::string & address )
{
   Context context( redisConnectUnix( address.c_str() ) );
   require( context && context->err == 0, "a connection to Redis" );
   return context;
}

Reply nextReply( redisContext & context )
{
   void * reply = nullptr;
   require( redisGetReply( &context, &reply ) == REDIS_OK, "an answer of Redis" );
   Reply held( static_cast< redisReply * >( reply ) );
   require( held->type != REDIS_REPLY_ERROR, "an answer of Redis that is no error" );
   return held;
}

std::string_view textOf( const redisReply & reply ) noexcept
{
   return { reply.str, reply.len };
}

std::uint64_t numberIn( std::string_view text ) noexcept
{
   std::uint64_t number = 0;
   std::from_chars( text.data(), text.data() + text.size(), number );
   return number;
}

// Puts a command behind those that are to be sent.
template< class Words > void append( redisContext & context, const Words & words )
{
   constexpr std::size_t most = 2 + 2 * columns;
   std::array< const char *, most > data{};
   std::array< std::size_t, most > sizes{};
   std::size_t count = 0;
   for ( const std::string_view word : words ) {
      data[ count ] = word.data();
      sizes[ count++ ] = word.size();
   }
   redisAppendCommandArgv( &context, static_cast< int >( count ), data.data(), sizes.data() );
}

void append( redisContext & context, std::initializer_list< std::string_view > words )
{
   append< std::initializer_list< std::string_view > >( context, words );
}

class RedisWriter final : public Writer {
 public:
   explicit RedisWriter( const std::string & address ) : context_( connectTo( address ) ) {}

   void fill( const Model & model ) override
   {
      for ( std::uint32_t member = 0; member != model.size(); ++member ) {
         names_.push_back( memberName( member ) );
         std::vector< std::string > words{ "HSET", names_.back() };
         for ( std::uint32_t column = 0; column != columns; ++column ) {
            words.emplace_back( columnNames[ column ] );
            words.push_back( std::to_string( model.row( member )[ column ] ) );
         }
         append( *context_, words );
         ++asked_;
         if ( asked_ == window ) {
            flush();
         }
      }
      settle();
   }

   void change( const Change & change ) override
   {
      const std::string & name = names_[ change.member ];
      const std::string value = std::to_string( change.value );
      message_ = name;
      message_ += ' ';
      message_ += static_cast< char >( '0' + change.column );
      message_ += ' ';
      message_ += value;
      append( *context_, { "HSET", name, columnNames[ change.column ], value } );
      append( *context_, { "PUBLISH", channel, message_ } );
      asked_ += 2;
   }

   void flush() override
   {
      for ( int done = 0; done == 0; ) {
         require( redisBufferWrite( context_.get(), &done ) == REDIS_OK, "Redis takes commands" );
      }
      if ( asked_ >= window ) {
         answers( window / 2 );
      }
   }
   void settle() override
   {
      flush();
      answers( 0 );
   }

 private:
   static constexpr std::size_t window = 4096; // commands without an answer yet

   void answers( std::size_t left )
   {
      for ( ; asked_ > left; --asked_ ) {
         nextReply( *context_ );
      }
   }

   Context context_;
   std::vector< std::string > names_;
   std::string message_;
   std::size_t asked_ = 0;
};

class RedisSession {
 public:
   RedisSession( const std::string & address, Sink & sink ) : address_( address ),
                                                              sink_( sink ) {}

   void connect()
   {
      context_ = connectTo( address_ );
      append( *context_, { "SUBSCRIBE", channel } );
      nextReply( *context_ );
      load();
   }
   void disconnect() { context_.reset(); }
   int descriptor() const noexcept { return context_->fd; }

   void take()
   {
      if ( redisBufferRead( context_.get() ) != REDIS_OK ) {
         sink_.lost();
         connect();
         return;
      }
      void * reply = nullptr;
      while ( redisGetReplyFromReader( context_.get(), &reply ) == REDIS_OK && reply ) {
         const Reply held( static_cast< redisReply * >( reply ) );
         require( held->elements == 3, "a message" );
         apply( textOf( *held->element[ 2 ] ) );
      }
   }

   void tell()
   {
      if ( !sink_.marked() ) {
         return;
      }
      sink_.tell( [ this ] {
         std::uint64_t sum = 0;
         for ( const auto & [ name, row ] : table_ ) {
            sum += rowDigest( name, row );
         }
         return sum;
      } );
   }

 private:
   // All hashes: pages of keys, and what they hold.
   void load()
   {
      const Context second = connectTo( address_ );
      std::string cursor = "0";
      do {
         append( *second, { "SCAN", cursor, "COUNT", "1000" } );
         const Reply page = nextReply( *second );
         cursor = textOf( *page->element[ 0 ] );
         const redisReply & keys = *page->element[ 1 ];
         for ( std::size_t i = 0; i != keys.elements; ++i ) {
            std::vector< std::string_view > words{ "HMGET", textOf( *keys.element[ i ] ) };
            words.insert( words.end(), columnNames.begin(), columnNames.end() );
            append( *second, words );
         }
         for ( std::size_t i = 0; i != keys.elements; ++i ) {
            const Reply row = nextReply( *second );
            Row & counters = table_[ std::string( textOf( *keys.element[ i ] ) ) ];
            for ( std::size_t column = 0; column != columns; ++column ) {
               counters[ column ] = numberIn( textOf( *row->element[ column ] ) );
            }
         }
      } while ( cursor != "0" );
      sink_.changed( stampColumn, table_.at( memberName( 0 ) )[ stampColumn ], true );
   }

   // A message: name, column, value.
   void apply( std::string_view message )
   {
      const std::size_t end = message.find( ' ' );
      const std::string name( message.substr( 0, end ) );
      const auto column = static_cast< std::uint32_t >( message[ end + 1 ] - '0' );
      const std::uint64_t value = numberIn( message.substr( end + 3 ) );
      table_[ name ][ column ] = value;
      sink_.changed( column, value, column == stampColumn && name == memberName( 0 ) );
   }

   std::string address_;
   Sink & sink_;
   Context context_;
   std::unordered_map< std::string, Row > table_;
};

class RedisSubject final : public Subject {
 public:
   std::string name() const override { return "Redis"; }
   std::string missing() const override { return program().empty() ? "redis-tools" : ""; }

   std::unique_ptr< Process > start( const Scratch & scratch, bool limits ) const override
   {
      std::vector< std::string > arguments{ "--port", "0", "--unixsocket",
         scratchSocket( scratch ), "--save", "", "--appendonly", "no", "--dir",
         scratch.file( "" ) };
      if ( !limits ) {
         for ( const char * const word :
               { "--client-output-buffer-limit", "pubsub", "0", "0", "0" } ) {
            arguments.emplace_back( word );
         }
      }
      auto server = std::make_unique< Process >(
            program(), arguments, scratch.file( "server.log" ), "redis-server" );
      awaitSocket( *server, scratchSocket( scratch ) );
      return server;
   }
   std::unique_ptr< Writer > writer(
         const std::string & address, const WriterSetup & ) const override
   {
      return std::make_unique< RedisWriter >( address );
   }
   std::unique_ptr< Readers > readers(
         const std::string & address, std::vector< Sink > & sinks, bool ) const override
   {
      return std::make_unique< PollingReaders< RedisSession > >( address, sinks );
   }

 private:
   // The server is the program that checks its files, under another name; as such it comes with
   // the tools, without a service that starts by itself.
   static std::string program()
   {
      const std::string server = findProgram( "redis-server" );
      return server.empty() ? findProgram( "redis-check-rdb" ) : server;
   }
};

} // namespace

std::unique_ptr< Subject > redisSubject()
{
   return std::make_unique< RedisSubject >();
}

} // namespace Bench
