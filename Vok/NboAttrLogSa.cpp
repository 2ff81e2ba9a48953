// The two ends of a change stream, as clients see them.
#include "Vok/NboAttrLogSa.h"

#include "Vok/detail/BatchHistory.h"
#include "Vok/detail/BatchNode.h"
#include "Vok/detail/BatchReader.h"
#include "Vok/detail/BatchWriter.h"

#include <stdexcept>

namespace Vok {

EntityVokNboAttrLogSa::EntityVokNboAttrLogSa( const Corvo::Ptr< Entity > & root )
      : writer_( std::make_unique< Detail::BatchWriter >( root ) )
{
}

EntityVokNboAttrLogSa::~EntityVokNboAttrLogSa() = default;

bool EntityVokNboAttrLogSa::hasChanges() const noexcept
{
   return writer_->hasChanges();
}

void EntityVokNboAttrLogSa::write( NboAttrLog::Out & out )
{
   writer_->write( out );
}

void EntityVokNboAttrLogSa::resync() noexcept
{
   writer_->resync();
}

void EntityVokNboAttrLogSa::writeWhole( NboAttrLog::Out & out )
{
   writer_->catchUp( 0, out );
}

StreamPosition EntityVokNboAttrLogSa::position() const noexcept
{
   return writer_->position();
}

void EntityVokNboAttrLogSa::onPending( std::function< void() > f )
{
   writer_->onPending( std::move( f ) );
}

StreamPlace::StreamPlace( EntityVokNboAttrLogSa & writer )
      : place_( std::make_unique< Detail::BatchPlace >( *writer.writer_ ) )
{
}

StreamPlace::~StreamPlace() = default;

StreamPlace::Told StreamPlace::catchUp( NboAttrLog::Out & out )
{
   const Told told = catchUp( position(), out );
   moveTo( place_->writer->position().batch );
   return told;
}

StreamPlace::Told StreamPlace::catchUp( const StreamPosition & reader, NboAttrLog::Out & out ) const
{
   Detail::BatchWriter * const writer = place_->writer;
   if ( !writer ) {
      throw std::logic_error( "a reader catches up with a stream that is gone" );
   }
   const StreamPosition end = writer->position();
   if ( reader == end && end.batch != 0 && !writer->hasChanges() ) {
      return Told::nothing;
   }
   const bool follows = reader.stream == end.stream && reader.batch >= place_->batch &&
         reader.batch <= end.batch;
   const bool whole = writer->catchUp( follows ? reader.batch : 0, out );
   return whole ? Told::wholeTree : Told::changes;
}

void StreamPlace::moveTo( std::uint64_t batch ) noexcept
{
   if ( place_->writer ) {
      place_->writer->move( *place_, batch );
   }
}

StreamPosition StreamPlace::position() const noexcept
{
   return { place_->writer ? place_->writer->position().stream : 0, place_->batch };
}

EntityVokNboAttrLogReader::EntityVokNboAttrLogReader( const Corvo::Ptr< Entity > & root )
      : reader_( std::make_unique< Detail::BatchReader >( root ) )
{
}

EntityVokNboAttrLogReader::~EntityVokNboAttrLogReader() = default;

void EntityVokNboAttrLogReader::read( NboAttrLog::In & in )
{
   reader_->read( in );
}

StreamPosition EntityVokNboAttrLogReader::position() const noexcept
{
   return reader_->position();
}

std::vector< Corvo::String > EntityVokNboAttrLogReader::passedOver() const
{
   return reader_->passedOver();
}

} // namespace Vok
