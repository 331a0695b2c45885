# Puts what the program's help says in a language into the manual page of that language. help2man could do that for languages
# that the machine has locales of, which it need not have for the program.
#
#   perl translated_page.pl PROGRAM LANGUAGE TEMPLATE PAGE
#
# The template has four comments: SYNOPSIS, OPTIONS, NOTES and STATUSES.
use strict;
use warnings;
use utf8;
use open qw(:std :encoding(UTF-8));

my ($program, $language, $template, $page) = @ARGV;

sub content {
    my ($source, @command) = @_;
    open my $file, $source, @command or die "@command: $!\n";
    my @lines = <$file>;
    close $file or die "@command: failed\n";
    chomp @lines;
    return @lines;
}

# A line of text: what groff would take for a command or a hyphen is neither.
sub text {
    my ($line) = @_;
    $line =~ s/\\/\\e/g;
    $line =~ s/-/\\-/g;
    return $line =~ /^[.']/ ? "\\&$line" : $line;
}

# Lines of Chinese and Japanese end between any two characters, but for punctuation that belongs to one of them.
my $wide = qr/[\p{Han}\p{Hiragana}\p{Katakana}ー、。，；：？！（）「」]/;
sub breakable {
    my ($line) = @_;
    $line =~ s/($wide)(?=$wide)(?<![（「])(?![、。，；：？！）」ーぁぃぅぇぉっゃゅょァィゥェォッャュョ])/$1\\:/g;
    return $line;
}

local $ENV{LANGUAGE} = $language;
local $ENV{LC_ALL} = 'C.UTF-8';
my ($usage, @help) = content('-|', $program, '--help');

# Headings, and the lines below them.
my @groups;
for (@help) {
    if (/^(\S.*):$/) { push @groups, { title => $1, lines => [] } }
    elsif (/\S/) { push @{ $groups[-1]{lines} }, s/^ +//r }
}
my ($notes, $statuses) = splice @groups, -2;

my %parts;
my $synopsis = $usage =~ s/^.*?tavro-print *//r;
$parts{SYNOPSIS} = ".B tavro-print\n" . text($synopsis);
$parts{OPTIONS} = join "\n", map {
    my $items = join "\n", map {
        /^(--[a-z-]+)( [^ ]+)?  +(.*)$/ or die "$language: not an option: $_\n";
        ".TP\n.B " . text($1) . (defined $2 ? '\fR' . text($2) : '') . "\n" . text($3);
    } @{ $_->{lines} };
    '.SS "' . text($_->{title}) . "\"\n$items";
} @groups;
$parts{NOTES} = join "\n", map { text($_) } @{ $notes->{lines} };
$parts{STATUSES} = join "\n", map {
    /^([0-9]) +(.*)$/ or die "$language: not a status: $_\n";
    ".TP\n$1\n" . text($2);
} @{ $statuses->{lines} };

my @lines;
for (content('<', $template)) {
    if (/^\.\\" ([A-Z]+)$/) { $_ = delete $parts{$1} // die "$template: no part $1\n" }
    push @lines, split /\n/;
}
die "$template: lacks " . join(', ', sort keys %parts) . "\n" if %parts;
my $text = join "\n", @lines;
$text =~ s/($wide)\n(?=$wide)/$1/g;  # the end of a line would be a blank
open my $output, '>', $page or die "$page: $!\n";
print $output map { (/^\.(?!TP|PP)/ ? $_ : breakable($_)) . "\n" } split /\n/, $text;
close $output or die "$page: $!\n";
