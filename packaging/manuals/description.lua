-- Makes a manual page of a description: its title becomes the page's name, tables of two columns become lists, links to
-- examples name their installed place, and what is typed is bold.

local examples, name, others

local function as_list(rows)
  local items = {}
  for _, row in ipairs(rows) do
    table.insert(items, {pandoc.utils.blocks_to_inlines(row[1]), {row[2]}})
  end
  return pandoc.DefinitionList(items)
end

return {
  {
    Meta = function(it)
      examples = pandoc.utils.stringify(it.examples)
      name = pandoc.utils.stringify(it.name)
      others = pandoc.utils.stringify(it.others)
    end,
  },
  {
    Code = function(it) return pandoc.Strong((it.text:gsub(' ', '\u{a0}'))) end,
    Header = function(it)
      it.level = it.level - 1
      if it.level == 0 then
        return {}
      end
      return pandoc.walk_block(it, { Str = function(word) return pandoc.Str(pandoc.text.upper(word.text)) end })
    end,
    Link = function(it)
      local example = it.target:match('^examples/(.+)') or error('no place for a link to ' .. it.target)
      return pandoc.Emph(examples .. '/' .. example)
    end,
    Table = function(it)
      local simple = pandoc.utils.to_simple_table(it)
      return #simple.widths == 2 and as_list(simple.rows) or error('a table of ' .. #simple.widths .. ' columns')
    end,
  },
  {
    Pandoc = function(it)
      it.blocks:insert(1, pandoc.Header(1, 'NAME'))
      it.blocks:insert(2, pandoc.Plain(name))
      it.blocks:insert(3, pandoc.Header(1, 'DESCRIPTION'))
      it.blocks:insert(pandoc.Header(1, 'SEE ALSO'))
      it.blocks:insert(pandoc.Plain(others))
      return it
    end,
  },
}
