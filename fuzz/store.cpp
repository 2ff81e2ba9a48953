// The store's side of a connection. An input is what a hostile client does, step by step; beside it
// an honest writer and its reader go on.
#include "fuzz/StoreWorld.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using Fuzz::framed;
using Fuzz::hold;
using namespace Vok::Store;

constexpr unsigned mostSteps = 40;
constexpr Fuzz::Budget steps{ 40'000'000, 20'000 };

class Hostile {
 public:
   Hostile()
   {
      Limits & limits = setup_.limits;
      setup_.access = &access_;
      limits.mounts = 20;
      limits.channels = 10;
      limits.batch = limits.unfinished = 100'000;
      server_.emplace( clock_, setup_ );
      honest_.emplace( *server_ );
      honest_->hold();
   }

   void step( Fuzz::Input & input )
   {
      const std::uint8_t what = input.byte();
      const auto channel = static_cast< std::uint32_t >( input.byte() % 8 );
      switch ( what % 12 ) {
      case 0:
         say( input.bytes( input.byte() ) );
         break;
      case 1:
         say( framed( input.bytes( input.byte() ) ) );
         break;
      case 2:
         say( framed( Hello{ protocolVersion, text( input ) } ) );
         break;
      case 3:
         say( framed( OpenWriter{ channel, path( input ), "Test::Root", what >= 128 } ) );
         break;
      case 4:
         say( framed( OpenWriter{ channel, text( input ), text( input ), what >= 128 } ) );
         break;
      case 5:
         say( framed( OpenReader{ channel, what >= 128 ? "**" : text( input ),
               { { path( input ), input.byte(), input.byte() } } } ) );
         break;
      case 6:
         batch( channel, input.byte() );
         break;
      case 7:
         say( framed( BatchPiece{ channel, 0, what >= 128, input.bytes( input.byte() ) } ) );
         break;
      case 8:
         say( framed( Close{ channel, what >= 128 } ) );
         break;
      case 9:
         say( framed( ListMounts{ channel, "**", what >= 128 } ) );
         break;
      case 10:
         listen( input.byte() * 100U );
         break;
      default:
         session_.reset();
         break;
      }
   }

   void holdAll()
   {
      listen( std::size_t( -1 ) );
      honest_->hold();
      session_.reset();
      honest_->hold();
   }

 private:
   static std::string text( Fuzz::Input & input )
   {
      const Fuzz::Bytes bytes = input.bytes( input.byte() % 32 );
      return { reinterpret_cast< const char * >( bytes.data() ), bytes.size() };
   }

   static std::string path( Fuzz::Input & input )
   {
      static const char * const paths[] = { "a", "a/b", Fuzz::HonestPair::path, "c" };
      return paths[ input.byte() % 4 ];
   }

   void say( Fuzz::Bytes bytes )
   {
      if ( !session_ ) {
         session_ = server_->connected( { "hostile", 2, {}, {} } );
         heard_ = std::make_unique< FrameReader >();
         say( framed( Hello{ protocolVersion, "hostile" } ) );
      }
      if ( session_->takesMore() ) {
         session_->receive( bytes );
      }
   }

   /// The next batch of a stream of its own, as it should be.
   void batch( std::uint32_t channel, std::uint8_t change )
   {
      root_->midIs( change );
      root_->treeIs( std::to_string( change % 4 ) )->depthIs( change );
      Vok::NboAttrLog::Out out;
      if ( change % 8 == 0 ) {
         stream_.resync();
      }
      stream_.write( out );
      say( framed( BatchPiece{ channel, 0, true, out.bytes() } ) );
   }

   /// Takes what it is sent, which makes sense whatever it said.
   void listen( std::size_t most )
   {
      server_->publish();
      while ( session_ && most != 0 && !session_->output().empty() ) {
         const auto output =
               session_->output().first( std::min( most, session_->output().size() ) );
         std::span< const std::byte > piece = output;
         while ( const auto frame = heard_->feed( piece ) ) {
            decode( *frame );
         }
         most -= output.size();
         session_->sent( output.size() );
      }
   }

   Fuzz::NoClock clock_;
   Fuzz::HonestAlone access_;
   ServerSetup setup_;
   std::optional< Server > server_;
   std::optional< Fuzz::HonestPair > honest_;
   std::unique_ptr< Session > session_;
   std::unique_ptr< FrameReader > heard_;
   Corvo::Ptr< Test::Root > root_ = Test::Root::RootIs( "hostile" );
   Vok::EntityVokNboAttrLogSa stream_{ root_ };
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput( const std::uint8_t * data, std::size_t size )
{
   Fuzz::Input input( data, size );
   const Fuzz::Cost cost;
   Hostile hostile;
   for ( unsigned i = 0; i != mostSteps && !input.empty(); ++i ) {
      hostile.step( input );
   }
   hostile.holdAll();
   cost.holdSteps( steps, size );
   return 0;
}
