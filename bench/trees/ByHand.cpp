// By hand: the structures themselves, with an encoding of fixed widths; and the bytes of the
// framework's batch, copied.
#include "bench/Check.h"
#include "bench/trees/Trees.h"

#include <cstring>
#include <utility>

namespace Bench::Trees {
namespace {

class Out {
 public:
   template< class T > void number( T value )
   {
      std::memcpy( more( sizeof value ), &value, sizeof value );
   }
   void text( const std::string & text )
   {
      char * const to = more( sizeof( std::uint32_t ) + text.size() );
      const auto size = static_cast< std::uint32_t >( text.size() );
      std::memcpy( to, &size, sizeof size );
      std::memcpy( to + sizeof size, text.data(), text.size() );
   }
   void clear() noexcept { size_ = 0; }
   const char * data() const noexcept { return data_.get(); }
   std::size_t size() const noexcept { return size_; }

 private:
   char * more( std::size_t bytes )
   {
      if ( capacity_ - size_ < bytes ) {
         grow( bytes );
      }
      size_ += bytes;
      return data_.get() + ( size_ - bytes );
   }
   void grow( std::size_t bytes )
   {
      const std::size_t capacity = 2 * ( size_ + bytes );
      auto data = std::make_unique< char[] >( capacity );
      if ( size_ != 0 ) {
         std::memcpy( data.get(), data_.get(), size_ );
      }
      data_ = std::move( data );
      capacity_ = capacity;
   }

   std::unique_ptr< char[] > data_;
   std::size_t size_ = 0;
   std::size_t capacity_ = 0;
};

class In {
 public:
   In( const char * data, std::size_t size ) : data_( data ),
                                               end_( data + size ) {}

   template< class T > void number( T & value )
   {
      std::memcpy( &value, next( sizeof value ), sizeof value );
   }
   template< class T > T number()
   {
      T value{};
      number( value );
      return value;
   }
   std::string text()
   {
      const auto size = number< std::uint32_t >();
      return { next( size ), size };
   }
   void text( std::string & text ) { text = this->text(); }
   bool atEnd() const noexcept { return data_ == end_; }

 private:
   const char * next( std::size_t bytes )
   {
      require( static_cast< std::size_t >( end_ - data_ ) >= bytes, "the bytes go on" );
      return std::exchange( data_, data_ + bytes );
   }

   const char * data_;
   const char * end_;
};

// Each structure once, for both directions: `x` is Out with constant, In with changing fields.
template< class X, class T > void fields( X & x, T & v );

template< class T > void one( Out & out, const T & v )
{
   if constexpr ( std::is_arithmetic_v< T > ) {
      out.number( v );
   } else if constexpr ( std::is_same_v< T, std::string > ) {
      out.text( v );
   } else {
      fields( out, v );
   }
}

template< class T > void one( In & in, T & v )
{
   if constexpr ( std::is_arithmetic_v< T > ) {
      in.number( v );
   } else if constexpr ( std::is_same_v< T, std::string > ) {
      in.text( v );
   } else {
      fields( in, v );
   }
}

template< class Map > void members( Out & out, const Map & map )
{
   out.number( static_cast< std::uint32_t >( map.size() ) );
   for ( const auto & [ key, value ] : map ) {
      one( out, key );
      one( out, value );
   }
}

template< class Map > void members( In & in, Map & map )
{
   const auto size = in.number< std::uint32_t >();
   map.reserve( size );
   for ( std::uint32_t i = 0; i != size; ++i ) {
      typename Map::key_type key{};
      one( in, key );
      one( in, map[ std::move( key ) ] );
   }
}

void texts( Out & out, const std::unordered_set< std::string > & set )
{
   out.number( static_cast< std::uint32_t >( set.size() ) );
   for ( const std::string & text : set ) {
      out.text( text );
   }
}

void texts( In & in, std::unordered_set< std::string > & set )
{
   const auto size = in.number< std::uint32_t >();
   set.reserve( size );
   for ( std::uint32_t i = 0; i != size; ++i ) {
      set.insert( in.text() );
   }
}

template< class X, class T > void fields( X & x, T & v )
{
   using Type = std::remove_const_t< T >;
   const auto all = [ &x ]( auto &... field ) { ( one( x, field ), ... ); };
   if constexpr ( std::is_same_v< Type, AccessList > ) {
      all( v.seqno, v.name, v.type );
   } else if constexpr ( std::is_same_v< Type, Mirror > ) {
      all( v.session, v.initialCopy, v.selector, v.interval );
   } else if constexpr ( std::is_same_v< Type, Group > ) {
      all( v.seqno, v.ip, v.ip6, v.mirror );
      texts( x, v.exporters );
   } else if constexpr ( std::is_same_v< Type, Exporter > ) {
      all( v.localIntf, v.mtu, v.dscp, v.templateInterval );
      members( x, v.collectors );
   } else if constexpr ( std::is_same_v< Type, Tracker > ) {
      members( x, v.exporters );
      members( x, v.groups );
      all( v.inactiveTimeout, v.activeInterval, v.flowTableSize, v.tcpStates );
   } else if constexpr ( std::is_same_v< Type, Config > ) {
      members( x, v.trackers );
      all( v.enabled, v.sampleRate );
   } else if constexpr ( std::is_same_v< Type, CollectorStatus > ) {
      all( v.reason, v.active );
   } else if constexpr ( std::is_same_v< Type, ExporterStatus > ) {
      members( x, v.reasons );
      all( v.active );
      members( x, v.collectors );
   } else if constexpr ( std::is_same_v< Type, TrackerStatus > ) {
      all( v.reason, v.active );
      members( x, v.exporters );
   } else {
      static_assert( std::is_same_v< Type, Status > );
      members( x, v.trackers );
   }
}

template< class Tree > class HandCodec {
 public:
   explicit HandCodec( const Tree & tree ) : tree_( tree ) { encode(); }

   void encode()
   {
      out_.clear();
      fields( out_, tree_ );
   }
   void decode() { data(); }
   Tree data()
   {
      In in( out_.data(), out_.size() );
      Tree tree;
      fields( in, tree );
      require( in.atEnd(), "all is read" );
      return tree;
   }
   std::size_t bytes() const { return out_.size(); }

 private:
   const Tree tree_;
   Out out_;
};

// As many bytes as the framework's batch has; both ways are the same.
template< class Tree > class Copy {
 public:
   explicit Copy( const Tree & tree ) : tree_( tree )
   {
      const std::size_t size = vok( tree ).bytes();
      from_.assign( size, 'x' );
      to_.assign( size, ' ' );
   }

   void encode() { std::memcpy( to_.data(), from_.data(), from_.size() ); }
   void decode() { std::memcpy( from_.data(), to_.data(), to_.size() ); }
   Tree data()
   {
      require( from_ == to_, "all is copied" );
      return tree_;
   }
   std::size_t bytes() const { return from_.size(); }

 private:
   const Tree tree_;
   std::string from_;
   std::string to_;
};

} // namespace

Codecs< Config > byHand( const Config & config )
{
   return codecsOf< HandCodec< Config > >( config );
}

Codecs< Status > byHand( const Status & status )
{
   return codecsOf< HandCodec< Status > >( status );
}

Codecs< Config > copied( const Config & config )
{
   return codecsOf< Copy< Config > >( config );
}

Codecs< Status > copied( const Status & status )
{
   return codecsOf< Copy< Status > >( status );
}

} // namespace Bench::Trees
