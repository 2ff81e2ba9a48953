// A batch that is written: what it is made of, and its frame of a header, descriptions of types and
// a checksum.
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/BatchWriter.h"

#include "Vok/TypeData.h"
#include "Vok/detail/BatchFormat.h"
#include "Vok/detail/BatchHistory.h"
#include "Vok/detail/Hash.h"

#include <algorithm>
#include <limits>
#include <string>

namespace Vok::Detail {

namespace {

// A body larger than this, a whole tree mostly, gives its memory back; others are written often.
constexpr std::size_t bodyKept = 1 << 20;

} // namespace

void BatchWriter::write( NboAttrLog::Out & out )
{
   if ( !hasChanges() ) {
      return;
   }
   const std::size_t start = out.size();
   ++written_;
   body_.clear();
   introduced_ = {};
   queue_.clear();
   belonging_.clear();
   try {
      if ( whole_ ) {
         writeWhole();
      } else {
         writeChanges();
      }
      finish( out, start, whole_ ? Batch::wholeFlag : std::uint8_t{ 0 } );
   } catch ( ... ) {
      out.truncate( start );
      --written_;
      whole_ = true; // nodes may have been made and counted that no reader knows
      throw;
   }
   while ( Node * const node = dirty_.first() ) {
      node->written();
      dirty_.remove( *node );
   }
   belonging_.clear();
   whole_ = false;
   for ( ; described_ != types_.size(); ++described_ ) {
      types_[ described_ ].describedAt = written_;
   }
   sweepLoose();
}

std::uint64_t BatchWriter::typeIndex( const TypeData & type )
{
   // The members of a collection come one after the other.
   if ( lastType_ < types_.size() && types_[ lastType_ ].written->type == &type ) {
      return lastType_;
   }
   const auto known = std::find_if( types_.begin(), types_.end(),
         [ &type ]( const NumberedType & numbered ) { return numbered.written->type == &type; } );
   if ( known == types_.end() ) {
      types_.push_back( { &writtenType( type ), 0 } );
      return lastType_ = types_.size() - 1;
   }
   return lastType_ = static_cast< std::size_t >( known - types_.begin() );
}

std::uint64_t BatchWriter::findTypeOf( Node & node )
{
   const std::uint64_t index = typeIndex( node.entity->typeData() );
   node.type = static_cast< std::uint16_t >( std::min< std::uint64_t >( index, Node::noType ) );
   return index;
}

void BatchWriter::describeTypes( NboAttrLog::Out & out, std::size_t described )
{
   // Describing a type may number further ones: those of its children.
   scratch_.clear();
   for ( std::size_t i = described; i != types_.size(); ++i ) {
      types_[ i ].written->describe(
            scratch_, [ this ]( const TypeData & type ) { return typeIndex( type ); } );
   }
   out.putVarint( types_.size() - described );
   out.putBytes( scratch_.data(), scratch_.size() );
}

void BatchWriter::finish( NboAttrLog::Out & out, std::size_t start, std::uint8_t flags )
{
   out.reserve( Batch::headerSize + body_.size() + 64 );
   out.put( Batch::magic );
   out.put( Batch::version );
   out.put( flags );
   const std::size_t lengthAt = out.size();
   out.put( std::uint32_t{ 0 } );
   out.put( stream_ );
   out.putVarint( written_ );
   if ( flags == Batch::sinceFlag ) {
      out.putVarint( reader_->since );
   }
   describeTypes( out, reader_ ? typesBefore( reader_->since ) : described_ );
   out.putBytes( body_.data(), body_.size() );
   if ( body_.size() > bodyKept ) {
      body_ = NboAttrLog::Out();
      queue_ = {};
   }
   const std::size_t length = out.size() - start + Batch::checksumSize;
   if ( length > std::numeric_limits< std::uint32_t >::max() ) {
      throw NboAttrLog::Exception(
            "a batch of " + std::to_string( length ) + " bytes is too large" );
   }
   out.patch32( lengthAt, static_cast< std::uint32_t >( length ) );
   out.put( checksum64( out.data() + start, out.size() - start ) );
}

} // namespace Vok::Detail
