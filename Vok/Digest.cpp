// The digest of a tree: sums of hashes, so that the order of members does not matter.
#include "Vok/Digest.h"

#include "Vok/Entity.h"
#include "Vok/Path.h"
#include "Vok/TextOut.h"
#include "Vok/TypeData.h"
#include "Vok/detail/CollectionOps.h"
#include "Vok/detail/Hash.h"
#include "Vok/detail/Storage.h"
#include "Vok/detail/StreamType.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace Vok {

namespace {

using Detail::AttributeRow;
using Detail::multiplyFold;

// 128 bits that bytes are mixed into, and that are added up.
struct Sum {
   std::uint64_t a = 0x6a09e667f3bcc909;
   std::uint64_t b = 0xbb67ae8584caa73b;

   void add( const Sum & other ) noexcept
   {
      a += other.a;
      b += other.b;
   }
   void mix( std::uint64_t word ) noexcept
   {
      const std::uint64_t left = multiplyFold( a ^ word, Detail::hashWords[ 2 ] );
      const std::uint64_t right = multiplyFold( b ^ word, Detail::hashWords[ 6 ] );
      a = left ^ ( b << 1 | b >> 63 );
      b = right + left;
   }
   void mix( const std::byte * bytes, std::size_t size ) noexcept
   {
      mix( size );
      mix( Detail::checksum64( bytes, size ) );
      for ( ; size != 0; ) {
         std::uint64_t word = 0;
         const std::size_t taken = size < 8 ? size : 8;
         for ( std::size_t i = 0; i != taken; ++i ) {
            word = word << 8 | static_cast< std::uint64_t >( bytes[ i ] );
         }
         mix( word );
         bytes += taken;
         size -= taken;
      }
   }
   void mix( std::string_view text ) noexcept
   {
      mix( reinterpret_cast< const std::byte * >( text.data() ), text.size() );
   }
   void mix( const Sum & other ) noexcept
   {
      mix( other.a );
      mix( other.b );
   }
};

// One entity on the walk; its children follow it.
struct Visit {
   const Entity * entity;
   std::size_t parent;
   AttrId attribute; // of the parent
   Sum own;
   Sum references;
   Sum children;
};

// A reference is resolved when all entities of the tree are known.
struct Reference {
   std::size_t from;
   AttrId attribute;
   const Entity * target;
};

class Walk {
 public:
   // `tree` is the walk over the tree that refers to `root`, where that is outside.
   explicit Walk( const Entity & root, Walk * tree ) : root_( root ),
                                                       tree_( tree ) {}

   Sum digest()
   {
      visits_.push_back( { &root_, 0, 0, {}, {}, {} } );
      for ( std::size_t i = 0; i != visits_.size(); ++i ) {
         visits_[ i ].own = ownPart( i );
      }
      for ( const Reference & reference : references_ ) {
         Sum sum;
         sum.mix( reference.attribute );
         sum.mix( targetPart( reference.target ) );
         visits_[ reference.from ].references.add( sum );
      }
      for ( std::size_t i = visits_.size() - 1; i != 0; --i ) {
         const Visit & visit = visits_[ i ];
         Sum member;
         member.mix( visit.attribute );
         visits_[ visit.parent ].children.add( whole( member, visit ) );
      }
      return whole( {}, visits_.front() );
   }

 private:
   static Sum whole( Sum sum, const Visit & visit )
   {
      sum.mix( visit.own );
      sum.mix( visit.references );
      sum.mix( visit.children );
      return sum;
   }

   Sum ownPart( std::size_t index )
   {
      const Entity & entity = *visits_[ index ].entity;
      Sum own;
      own.mix( entity.typeData().name() );
      for ( const AttributeData & attribute : entity.typeData().attributes() ) {
         const AttributeRow & row = attribute.row();
         const bool argument = row.kind == AttributeKind::constructorArgument;
         if ( ( !argument && !Detail::isStreamed( row ) ) ||
               ( index == 0 && row.identity && !tree_ ) ) {
            continue;
         }
         if ( row.collection ) {
            addMembers( own, index, row );
         } else if ( row.reference ) {
            references_.push_back( { index, row.id, Detail::referred( entity, row ) } );
         } else {
            addValue( own, entity, row );
         }
      }
      return own;
   }

   void addValue( Sum & own, const Entity & entity, const AttributeRow & row )
   {
      const void * value = row.identity && !row.fromName
            ? static_cast< const void * >( &entity.name() )
            : Detail::storageOf( entity, row );
      Detail::OwnedValue word( *row.value );
      if ( row.storage ) {
         row.storage->load( value, word.data() );
         value = word.data();
      }
      bytes_.clear();
      row.value->encode( bytes_, value );
      own.mix( bytes_.data(), bytes_.size() );
   }

   void addMembers( Sum & own, std::size_t index, const AttributeRow & row )
   {
      Sum sum;
      const Entity & entity = *visits_[ index ].entity;
      row.collection->each(
            Detail::storageOf( entity, row ), [ & ]( const void * key, const void * value ) {
               if ( row.kind == AttributeKind::references ) {
                  references_.push_back( { index, row.id, row.collection->pointee( value ) } );
               } else if ( Detail::holdsEntities( row ) ) {
                  visits_.push_back(
                        { row.collection->pointee( value ), index, row.id, {}, {}, {} } );
               } else {
                  bytes_.clear();
                  row.key->encode( bytes_, key );
                  if ( row.kind == AttributeKind::map ) {
                     row.value->encode( bytes_, value );
                  }
                  Sum member;
                  member.mix( bytes_.data(), bytes_.size() );
                  sum.add( member );
               }
               return true;
            } );
      own.mix( sum );
   }

   // What a reference says of its target: where in the tree it is. One that leads outside is what
   // it refers to; what that refers to outside in turn is told by its constructor arguments alone.
   Sum targetPart( const Entity * target )
   {
      Sum sum;
      if ( !target ) {
         return sum;
      }
      if ( const Sum * const place = placeOf( *target ) ) {
         sum.mix( tree_ ? 2U : 1U );
         sum.mix( *place );
      } else if ( const Sum * const inTree = tree_ ? tree_->placeOf( *target ) : nullptr ) {
         sum.mix( 1 );
         sum.mix( *inTree );
      } else {
         sum.mix( 3 );
         sum.mix( tree_ ? argumentsOf( *target ) : outsideDigest( *target ) );
      }
      return sum;
   }

   // Where an entity is in this tree; null where it is not in it. All of the tree is visited.
   const Sum * placeOf( const Entity & entity )
   {
      if ( places_.empty() ) {
         places_.reserve( visits_.size() );
         std::vector< Sum > sums( visits_.size() );
         for ( std::size_t i = 0; i != visits_.size(); ++i ) {
            const Visit & visit = visits_[ i ];
            if ( i != 0 ) {
               TextOut step;
               Detail::putStep( step, *visits_[ visit.parent ].entity, *visit.entity );
               sums[ i ] = sums[ visit.parent ];
               sums[ i ].mix( step.view() );
            }
            places_.emplace( visit.entity, sums[ i ] );
         }
      }
      const auto found = places_.find( &entity );
      return found == places_.end() ? nullptr : &found->second;
   }

   Sum outsideDigest( const Entity & target )
   {
      const auto [ found, added ] = outside_.try_emplace( &target );
      if ( added ) {
         found->second = Walk( target, this ).digest();
      }
      return found->second;
   }

   Sum argumentsOf( const Entity & target )
   {
      Sum sum;
      sum.mix( target.typeData().name() );
      for ( const AttributeData & argument : target.typeData().constructorArguments() ) {
         if ( !argument.row().reference ) {
            addValue( sum, target, argument.row() );
         }
      }
      return sum;
   }

   const Entity & root_;
   Walk * tree_;
   std::vector< Visit > visits_;
   std::vector< Reference > references_;
   std::unordered_map< const Entity *, Sum > places_; // of all entities, once one is asked for
   std::unordered_map< const Entity *, Sum > outside_; // digests of what is referred to
   NboAttrLog::Out bytes_;
};

} // namespace

Corvo::String Digest::text() const
{
   static constexpr char digits[] = "0123456789abcdef";
   char text[ 32 ];
   for ( unsigned i = 0; i != 16; ++i ) {
      text[ i ] = digits[ high_ >> ( 60 - 4 * i ) & 15 ];
      text[ 16 + i ] = digits[ low_ >> ( 60 - 4 * i ) & 15 ];
   }
   return Corvo::String( std::string_view( text, sizeof text ) );
}

Digest treeDigest( const Entity & root )
{
   const Sum sum = Walk( root, nullptr ).digest();
   return Digest( sum.a, sum.b );
}

} // namespace Vok
