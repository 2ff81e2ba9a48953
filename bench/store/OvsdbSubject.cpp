// OVSDB: a row for each member, a transaction for each batch. A reader monitors the table and
// applies what it is told to a map of its own. The counters are ephemeral columns, which the server
// writes to no disk.
#include "bench/Check.h"
#include "bench/store/JsonRpc.h"
#include "bench/store/OvsdbUpdates.h"
#include "bench/store/Polling.h"
#include "bench/store/Process.h"
#include "bench/store/Subject.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <optional>

namespace Bench {
namespace {

constexpr const char * schema = R"({"name": "Bench", "version": "1.0.0", "tables": {"Flow": {
   "isRoot": true, "columns": {
      "name": {"type": "string"},
      "packets": {"type": "integer", "ephemeral": true},
      "bytes": {"type": "integer", "ephemeral": true},
      "drops": {"type": "integer", "ephemeral": true},
      "stamp": {"type": "integer", "ephemeral": true}}}}})";

class OvsdbWriter final : public Writer {
 public:
   explicit OvsdbWriter( const std::string & address ) : connection_( address ) {}

   void fill( const Model & model ) override
   {
      constexpr std::uint32_t rows = 1000; // of a transaction
      for ( std::uint32_t member = 0; member != model.size(); ++member ) {
         operation( R"({"op":"insert","table":"Flow","row":{"name":")" );
         transaction_ += memberName( member ) + '"';
         for ( std::uint32_t column = 0; column != columns; ++column ) {
            transaction_ += std::string( ",\"" ) + columnNames[ column ] +
                  "\":" + std::to_string( model.row( member )[ column ] );
         }
         transaction_ += "}}";
         if ( member % rows == rows - 1 || member + 1 == model.size() ) {
            flush();
            answers( 0 );
         }
      }
   }

   void change( const Change & change ) override
   {
      operation( R"({"op":"update","table":"Flow","where":[["_uuid","==",["uuid",")" );
      transaction_ += uuids_[ change.member ];
      transaction_ += R"("]]],"row":{")";
      transaction_ += columnNames[ change.column ];
      transaction_ += "\":";
      transaction_ += std::to_string( change.value );
      transaction_ += "}}";
   }

   void flush() override
   {
      if ( transaction_.empty() ) {
         return;
      }
      transaction_ += "]}";
      connection_.send( transaction_ );
      transaction_.clear();
      if ( ++asked_ >= window ) {
         answers( window / 2 );
      }
   }
   void settle() override
   {
      flush();
      answers( 0 );
   }

 private:
   static constexpr std::size_t window = 32; // transactions without an answer yet

   void operation( const char * begin )
   {
      constexpr const char * head = R"({"id":1,"method":"transact","params":["Bench",)";
      transaction_ += transaction_.empty() ? head : ",";
      transaction_ += begin;
   }

   void answers( std::size_t left )
   {
      for ( ; asked_ > left; --asked_ ) {
         const auto answer = nlohmann::json::parse( connection_.await() );
         require( answer[ "error" ].is_null(), "a transaction" );
         for ( const auto & result : answer[ "result" ] ) {
            if ( result.contains( "uuid" ) ) {
               uuids_.push_back( result[ "uuid" ][ 1 ] );
            } else {
               require( result.value( "count", 0 ) == 1, "an operation of a transaction" );
            }
         }
      }
   }

   JsonConnection connection_;
   std::vector< std::string > uuids_;
   std::string transaction_;
   std::size_t asked_ = 0;
};

class OvsdbSession {
 public:
   OvsdbSession( const std::string & address, Sink & sink ) : address_( address ),
                                                              updates_( sink ) {}

   // With the last transaction that it has, which the server may still know the way from.
   void connect()
   {
      connection_.emplace( address_ );
      const std::string & last = updates_.last();
      connection_->send( R"({"id":1,"method":"monitor_cond_since","params":["Bench","m",{"Flow":)"
                         R"([{"columns":["name","packets","bytes","drops","stamp"]}]},")" +
            last + R"("]})" );
   }
   void disconnect() { connection_.reset(); }
   int descriptor() const noexcept { return connection_->descriptor(); }
   void tell() { updates_.tell(); }

   void take()
   {
      if ( !connection_->receive() ) {
         updates_.lost();
         connect();
         return;
      }
      while ( true ) {
         const std::string_view text = connection_->next();
         if ( text.empty() ) {
            return;
         }
         if ( updates_.take( text ) ) {
            connection_->send( R"({"id":"echo","result":[],"error":null})" );
         }
      }
   }

 private:
   std::string address_;
   OvsdbUpdates updates_;
   std::optional< JsonConnection > connection_;
};

class OvsdbSubject final : public Subject {
 public:
   std::string name() const override { return "OVSDB"; }
   std::string missing() const override
   {
      return server().empty() || tool().empty() ? "openvswitch-common" : "";
   }

   std::unique_ptr< Process > start( const Scratch & scratch, bool ) const override
   {
      const std::string database = scratch.file( "db" );
      std::ofstream( scratch.file( "schema" ) ) << schema;
      {
         const Process made( tool(), { "create", database, scratch.file( "schema" ) },
               scratch.file( "tool.log" ) );
         while ( made.running() ) {
         }
      }
      const std::vector< std::string > arguments{ "--remote=punix:" + scratchSocket( scratch ),
         "--unixctl=" + scratch.file( "control" ), "--log-file=/dev/null", database };
      auto process =
            std::make_unique< Process >( server(), arguments, scratch.file( "server.log" ) );
      awaitSocket( *process, scratchSocket( scratch ) );
      return process;
   }
   std::unique_ptr< Writer > writer(
         const std::string & address, const WriterSetup & ) const override
   {
      return std::make_unique< OvsdbWriter >( address );
   }
   std::unique_ptr< Readers > readers(
         const std::string & address, std::vector< Sink > & sinks, bool ) const override
   {
      return std::make_unique< PollingReaders< OvsdbSession > >( address, sinks );
   }

 private:
   static std::string server() { return findProgram( "ovsdb-server" ); }
   static std::string tool() { return findProgram( "ovsdb-tool" ); }
};

} // namespace

std::unique_ptr< Subject > ovsdbSubject()
{
   return std::make_unique< OvsdbSubject >();
}

} // namespace Bench
