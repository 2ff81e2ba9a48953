// A client's side of a connection. An input is what a hostile store says, step by step; with a
// store that is in order all is well afterwards.
#include "fuzz/StoreWorld.h"

#include <memory>
#include <string>
#include <vector>

namespace {

using Fuzz::framed;
using Fuzz::hold;
using namespace Vok::Store;

constexpr unsigned mostSteps = 40;
constexpr Fuzz::Budget steps{ 40'000'000, 20'000 };

class Victim {
 public:
   Victim() { client_.wire.connected(); }

   void step( Fuzz::Input & input )
   {
      const std::uint8_t what = input.byte();
      const auto channel = static_cast< std::uint32_t >( input.byte() % 4 );
      const auto mount = static_cast< std::uint32_t >( what >> 6U );
      switch ( what % 12 ) {
      case 0:
         say( input.bytes( input.byte() ) );
         break;
      case 1:
         say( framed( input.bytes( input.byte() ) ) );
         break;
      case 2:
         say( framed( Opened{ channel, stream( input ), input.byte(), mount == 1 } ) );
         break;
      case 3:
         say( framed( Mounted{ channel, mount, path( input ),
               what >= 128 ? "Test::Root" : "Test::Tree" } ) );
         break;
      case 4:
         say( framed(
               MountState{ channel, mount, what >= 128, input.byte(), "x", text( input ) } ) );
         break;
      case 5:
         say( framed( Acknowledged{ channel, input.byte() } ) );
         break;
      case 6:
         batch( channel, mount, input.byte() );
         break;
      case 7:
         say( framed(
               BatchPiece{ channel, mount, what >= 128, input.bytes( input.byte() ) } ) );
         break;
      case 8:
         say( framed( Unmounted{ channel, mount } ) );
         break;
      case 9:
         say( framed( Refused{ input.byte() == 0 ? channel : channel + 2, 0, text( input ) } ) );
         break;
      case 10:
         say( framed( MountList{ channel, what >= 128, {} } ) );
         break;
      default:
         written_->midIs( input.byte() );
         client_.client.flush();
         client_.wire.sent( client_.wire.output().size() );
         break;
      }
   }

   /// Connected to a store in order it reads and writes what it was to; but for what the other one
   /// refused, which it believes.
   void holdAll()
   {
      client_.wire.disconnected();
      const Fuzz::NoClock clock;
      Server server( clock );
      Fuzz::HonestPair honest( server );
      honest.hold();
      client_.connect( server );
      for ( bool moved = true; moved; ) {
         client_.client.flush();
         moved = client_.move();
         server.publish();
      }
      honest.hold();
      client_.move();
      const auto at = trees_.roots.find( Fuzz::HonestPair::path );
      hold( at != trees_.roots.end(), "a client reads what an honest store has" );
      hold( writing_->settled() != !writing_->refusal().empty(),
            "and writes, unless it was refused" );
      client_.disconnect(); // before the store ends
   }

 private:
   static std::string text( Fuzz::Input & input )
   {
      const Fuzz::Bytes bytes = input.bytes( input.byte() % 32 );
      return { reinterpret_cast< const char * >( bytes.data() ), bytes.size() };
   }

   static std::string path( Fuzz::Input & input )
   {
      static const char * const paths[] = { "a", "b", Fuzz::HonestPair::path, "honest/other" };
      return paths[ input.byte() % 4 ];
   }

   std::uint64_t stream( Fuzz::Input & input ) const
   {
      return input.byte() % 2 == 0 ? stream_.position().stream : input.byte();
   }

   void say( Fuzz::Bytes bytes )
   {
      if ( !client_.wire.isConnected() ) {
         client_.wire.connected();
      }
      try {
         client_.wire.receive( bytes );
      } catch ( const ProtocolException & ) {
         client_.wire.disconnected();
      } catch ( const FramingException & ) {
         client_.wire.disconnected();
      }
   }

   void batch( std::uint32_t channel, std::uint32_t mount, std::uint8_t change )
   {
      root_->midIs( change );
      root_->treeIs( std::to_string( change % 4 ) )->depthIs( change );
      Vok::NboAttrLog::Out out;
      if ( change % 4 == 0 ) {
         stream_.resync();
      }
      stream_.write( out );
      say( framed( BatchPiece{ channel, mount, true, out.bytes() } ) );
   }

   Fuzz::Honest client_{ "victim" };
   Fuzz::Trees trees_;
   Corvo::Ptr< Test::Root > written_ = Test::Root::RootIs( "written" );
   std::unique_ptr< Writing > writing_ = client_.client.write( "a", written_ );
   std::unique_ptr< Reading > reading_ = client_.client.read( "honest/*", trees_ );
   Corvo::Ptr< Test::Root > root_ = Test::Root::RootIs( "hostile" );
   Vok::EntityVokNboAttrLogSa stream_{ root_ };
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size )
{
   Fuzz::Input input( data, size );
   const Fuzz::Cost cost;
   Victim victim;
   for ( unsigned i = 0; i != mostSteps && !input.empty(); ++i ) {
      victim.step( input );
   }
   victim.holdAll();
   cost.holdSteps( steps, size );
   return 0;
}
