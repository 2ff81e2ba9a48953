// Redis: its server is the other process, and has a hash for each member. Commands are pipelined.
#include "bench/Check.h"
#include "bench/counters/Counters.h"
#include "bench/store/Process.h"

#include <hiredis.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace Bench::Counters {
namespace {

struct Free {
   void operator()( redisContext * context ) const noexcept { redisFree( context ); }
   void operator()( redisReply * reply ) const noexcept { freeReplyObject( reply ); }
};

// The server comes with the tools as the program that checks its files, under another name.
std::string program()
{
   const std::string server = findProgram( "redis-server" );
   return server.empty() ? findProgram( "redis-check-rdb" ) : server;
}

class RedisWriter final : public Writer {
 public:
   explicit RedisWriter( std::uint32_t members ) : table_( members + 1 )
   {
      while ( ::access( scratch_.file( "socket" ).c_str(), F_OK ) != 0 ) {
         require( server_.running(), "Redis runs" );
         std::this_thread::sleep_for( std::chrono::milliseconds( 1 ) );
      }
      context_.reset( redisConnectUnix( scratch_.file( "socket" ).c_str() ) );
      require( context_ && context_->err == 0, "a connection to Redis" );
      for ( std::uint32_t number = 1; number <= members; ++number ) {
         change( number, firstOf( number ) );
      }
      settle();
   }

   void change( std::uint32_t number, const Traffic & traffic ) override
   {
      table_[ number ] = traffic;
      const std::string words[] = { "HSET", std::to_string( number ), "packets",
         std::to_string( traffic.packets ), "bytes", std::to_string( traffic.bytes ) };
      append( words );
      if ( asked_ == window ) {
         settle(); // what it sends back has to be taken in time
      }
   }
   void flush() override
   {
      for ( int done = 0; done == 0; ) {
         require( redisBufferWrite( context_.get(), &done ) == REDIS_OK, "Redis takes commands" );
      }
   }
   void settle() override
   {
      flush();
      for ( ; asked_ != 0; --asked_ ) {
         answer();
      }
   }
   std::uint64_t elsewhere() const override { return server_.processorTime(); }
   bool alike() override
   {
      settle();
      bool alike = true;
      for ( std::uint32_t number = 1; number != table_.size(); ++number ) {
         const std::string words[] = { "HMGET", std::to_string( number ), "packets", "bytes" };
         append( words );
         flush();
         const auto row = answer();
         --asked_;
         alike = alike && row->elements == 2 &&
               row->element[ 0 ]->str == std::to_string( table_[ number ].packets ) &&
               row->element[ 1 ]->str == std::to_string( table_[ number ].bytes );
      }
      return alike;
   }

 private:
   static constexpr std::size_t window = 4096; // commands without an answer yet

   template< std::size_t count > void append( const std::string ( &words )[ count ] )
   {
      const char * data[ count ];
      std::size_t sizes[ count ];
      for ( std::size_t i = 0; i != count; ++i ) {
         data[ i ] = words[ i ].data();
         sizes[ i ] = words[ i ].size();
      }
      redisAppendCommandArgv( context_.get(), static_cast< int >( count ), data, sizes );
      ++asked_;
   }
   std::unique_ptr< redisReply, Free > answer()
   {
      void * reply = nullptr;
      require( redisGetReply( context_.get(), &reply ) == REDIS_OK, "an answer of Redis" );
      std::unique_ptr< redisReply, Free > held( static_cast< redisReply * >( reply ) );
      require( held->type != REDIS_REPLY_ERROR, "an answer of Redis that is no error" );
      return held;
   }

   Scratch scratch_;
   Process server_{ program(),
      { "--port", "0", "--unixsocket", scratch_.file( "socket" ), "--save", "",
            "--appendonly", "no",
            "--dir", scratch_.file( "" ) },
      scratch_.file( "server.log" ), "redis-server" };
   std::unique_ptr< redisContext, Free > context_;
   std::vector< Traffic > table_;
   std::size_t asked_ = 0;
};

} // namespace

std::unique_ptr< Writer > redis( std::uint32_t members )
{
   return std::make_unique< RedisWriter >( members );
}

bool hasRedis()
{
   return !program().empty();
}

} // namespace Bench::Counters
