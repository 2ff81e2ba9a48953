// libpcap.
#include "tools/flowtrack-platform/capture/Capture.h"

#include <array>
#include <cstdio>
#include <linux/if_packet.h>
#include <pcap/pcap.h>
#include <sys/socket.h>
#include <utility>

namespace FlowtrackPlatform {

namespace {

struct Taking {
   const std::function< void( const Frame & ) > & to;
   int linkType;
};

void taken( u_char * user, const pcap_pkthdr * header, const u_char * bytes )
{
   const auto * const taking = reinterpret_cast< const Taking * >( user );
   const auto seconds = static_cast< Time >( header->ts.tv_sec );
   const auto micros = static_cast< Time >( header->ts.tv_usec );
   taking->to( { taking->linkType, { bytes, header->caplen }, header->len,
         seconds * 1000 + micros / 1000 } );
}

/// libpcap leaves out what goes the other way only when it reads the kernel's buffer. Where the
/// kernel can (Linux since 4.20), packets that go out take no room in there, and count as neither
/// captured nor dropped: the loopback device has each packet in both directions.
void leaveOutgoing( pcap_t * handle )
{
#ifdef PACKET_IGNORE_OUTGOING
   const int yes = 1;
   ::setsockopt(
         ::pcap_fileno( handle ), SOL_PACKET, PACKET_IGNORE_OUTGOING, &yes, sizeof yes );
#else
   static_cast< void >( handle );
#endif
}

} // namespace

std::unique_ptr< Capture > Capture::live(
      const std::string & device, Direction direction, const CaptureSizes & sizes )
{
   std::array< char, PCAP_ERRBUF_SIZE > error{};
   pcap_t * const handle = ::pcap_create( device.c_str(), error.data() );
   if ( !handle ) {
      throw CaptureException( error.data() );
   }
   std::unique_ptr< Capture > made( new Capture( handle ) );
   ::pcap_set_snaplen( handle, static_cast< int >( sizes.packet ) );
   ::pcap_set_buffer_size( handle, static_cast< int >( sizes.buffer ) );
   ::pcap_set_timeout( handle, 100 );
   if ( const int failed = ::pcap_activate( handle ); failed < 0 ) {
      const std::string more = ::pcap_geterr( handle );
      throw CaptureException( "packets of " + device + " cannot be captured: " +
            ( more.empty() ? ::pcap_statustostr( failed ) : more ) );
   }
   if ( ::pcap_setnonblock( handle, 1, error.data() ) != 0 ||
         ::pcap_setdirection(
               handle, direction == Direction::ingress ? PCAP_D_IN : PCAP_D_OUT ) != 0 ) {
      throw CaptureException( "packets of " + device +
            " cannot be captured by direction: " + ::pcap_geterr( handle ) );
   }
   if ( direction == Direction::ingress ) {
      leaveOutgoing( handle );
   }
   made->descriptor_ = ::pcap_get_selectable_fd( handle );
   return made;
}

std::unique_ptr< Capture > Capture::file( const std::string & path )
{
   std::array< char, PCAP_ERRBUF_SIZE > error{};
   pcap_t * const handle = ::pcap_open_offline( path.c_str(), error.data() );
   if ( !handle ) {
      throw CaptureException( error.data() );
   }
   std::unique_ptr< Capture > made( new Capture( handle ) );
   made->descriptor_ = ::fileno( ::pcap_file( handle ) );
   return made;
}

Capture::~Capture()
{
   ::pcap_close( handle_ );
}

bool Capture::take( const std::function< void( const Frame & ) > & to, int most )
{
   Taking taking{ to, ::pcap_datalink( handle_ ) };
   const int count =
         ::pcap_dispatch( handle_, most, taken, reinterpret_cast< u_char * >( &taking ) );
   if ( count < 0 ) {
      throw CaptureException( ::pcap_geterr( handle_ ) );
   }
   return count != 0;
}

CaptureCounters Capture::counters() const
{
   pcap_stat stat{};
   if ( ::pcap_stats( handle_, &stat ) != 0 ) {
      return {};
   }
   return { stat.ps_recv, std::uint64_t{ stat.ps_drop } + stat.ps_ifdrop };
}

} // namespace FlowtrackPlatform
